#pragma once

#include "KvxDemosaicing/KvxTrueSense.h"
#include "tools/Converter.h"

namespace kvx::tool {

class TrueSenseConverter final : public Converter {
public:
    TrueSenseConverter() : TrueSenseConverter(Handle(KvxTrueSense_CreateComponent(), KvxTrueSense_DeleteComponent)) {}

private:
    using Handle = std::unique_ptr<KvxTrueSense, decltype(&KvxTrueSense_DeleteComponent)>;

    explicit TrueSenseConverter(Handle component);
    uint32_t Call(const _KvxImage& source, _KvxImage& destination) override;
    uint32_t White(uint32_t depth) const override;

    Handle m_component;
};

}  // namespace kvx::tool
