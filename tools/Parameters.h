#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "KvxDemosaicing/KvxComponent.h"

namespace kvx::tool {

/** The parameters of a component of the library. What it refuses is reported as ExitCode::Library. */
class Parameters {
public:
    /** `store` stays its converter's. */
    explicit Parameters(KvxComponent* store) : m_store(store) {}

    void SetText(const std::string& name, const std::string& value);
    void SetInt(const std::string& name, int64_t value);
    std::string Text(const std::string& name) const;
    int64_t Int(const std::string& name) const;
    std::vector<_KvxStParam> Descriptors() const;

private:
    KvxComponent* m_store;
};

}  // namespace kvx::tool
