#pragma once

#include "KvxDemosaicing/KvxBayer.h"
#include "tools/Converter.h"

namespace kvx::tool {

class BayerConverter final : public Converter {
public:
    BayerConverter() : BayerConverter(Handle(KvxBayer_CreateComponent(), KvxBayer_DeleteComponent)) {}

private:
    using Handle = std::unique_ptr<KvxBayer, decltype(&KvxBayer_DeleteComponent)>;

    explicit BayerConverter(Handle component);
    uint32_t Call(const _KvxImage& source, _KvxImage& destination) override;
    uint32_t White(uint32_t depth) const override;

    uint32_t ConvertToBytes(const _KvxImage& source, _KvxImage& destination) const;

    Handle m_component;
};

}  // namespace kvx::tool
