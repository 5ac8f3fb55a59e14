#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "KvxDemosaicing/KvxBayer.h"

namespace kvx::tool {

/** Owns the library's Bayer component and reports what it refuses as ExitCode::Library. */
class BayerComponent {
public:
    BayerComponent();

    void SetParameter(const std::string& name, const std::string& value);
    std::string ParameterText(const std::string& name) const;
    std::vector<_KvxStParam> Parameters() const;

    void SetAlgorithm(int64_t number);
    int64_t Algorithm() const;

    /** For the calls that convert. */
    KvxBayer* Get() const {
        return m_component.get();
    }

private:
    struct Deleter {
        void operator()(KvxBayer* component) const {
            KvxBayer_DeleteComponent(component);
        }
    };

    KvxComponent* Store() const {
        return KvxBayer_GetComponent(m_component.get());
    }

    std::unique_ptr<KvxBayer, Deleter> m_component;
};

}  // namespace kvx::tool
