#include "KvxBayer/BayerFlat.h"
#include "KvxDemosaicing/KvxBayer.h"
#include "framework/PixelFormats.h"

namespace kvx {

uint32_t ConvertBayerFlat(const _KvxImage& src, const _KvxImage& dst, int algType, ChannelOrder order,
                          const BayerOutput& output, SlotBytes slot) noexcept {
    const int code = PixelTypeToBayerType(src.pixelType, algType, order == ChannelOrder::BGR);
    if (code == -1 || algType == KvxBayerAlgorithm_IPP)
        return KvxResult_Of(KvxComponentType_Bayer, KvxResult_InvalidArgument);
    if (algType != KvxBayerAlgorithm_Bilinear && algType != KvxBayerAlgorithm_EdgeAware) return KvxResult_Success;
    return KvxResult_Of(KvxComponentType_Bayer, ConvertBayer(src, dst, code, output, slot));
}

}  // namespace kvx

uint32_t BayerToColor(const _KvxImage* src, _KvxImage* dst, int algType) noexcept {
    const _KvxPixelFormat* format = src ? KvxPixelFormat_ByCode(src->pixelType) : nullptr;
    if (!format || !dst) return KvxResult_Of(KvxComponentType_Bayer, KvxResult_InvalidArgument);
    kvx::BayerOutput output{.form = kvx::BayerOutput::Samples};
    if (!kvx::Is8Bit(src->pixelType) && kvx::Is8Bit(dst->pixelType))
        output = {.form = kvx::BayerOutput::RoundedBytes, .shift = format->bitsPerComponent - 8};
    const auto order = kvx::IsBlueFirst(dst->pixelType) ? kvx::ChannelOrder::BGR : kvx::ChannelOrder::RGB;
    return kvx::ConvertBayerFlat(*src, *dst, algType, order, output);
}
