#include <memory>
#include <new>

#include "KvxBayer/BayerFlat.h"
#include "KvxBayer/ipp/DemosaicingIPP.h"
#include "KvxDemosaicing/KvxBayer.h"
#include "framework/PixelFormats.h"

namespace kvx {
namespace {

/** By an interpolator of its own, which goes with the call: the flat functions keep nothing. */
uint32_t ConvertByInterpolator(const _KvxImage& src, _KvxImage& dst, const BayerOutput& output,
                               SlotBytes slot) noexcept {
    std::unique_ptr<DemosaicingIPP> interpolator;
    if (Is8Bit(src.pixelType))
        interpolator.reset(new (std::nothrow) DemosaicingIPP_8);
    else
        interpolator.reset(new (std::nothrow) DemosaicingIPP_16);
    if (!interpolator) return KvxResult_NoMemory;
    interpolator->SetOutput(output, slot);
    return interpolator->Convert(&dst, &src);
}

}  // namespace

uint32_t ConvertBayerFlat(const _KvxImage& src, _KvxImage& dst, int algType, ChannelOrder order,
                          const BayerOutput& output, SlotBytes slot) noexcept {
    const auto pattern = PatternOf(src.pixelType);
    if (!pattern) return KvxResult_Of(KvxComponentType_Bayer, KvxResult_InvalidArgument);
    if (algType == KvxBayerAlgorithm_IPP)
        return KvxResult_Of(KvxComponentType_Bayer, ConvertByInterpolator(src, dst, output, slot));
    if (algType != KvxBayerAlgorithm_Bilinear && algType != KvxBayerAlgorithm_EdgeAware) return KvxResult_Success;
    return KvxResult_Of(KvxComponentType_Bayer, ConvertBayer(src, dst, *pattern, order, RuleOf(algType), output, slot));
}

}  // namespace kvx

uint32_t BayerToColor(const _KvxImage* src, _KvxImage* dst, int algType) noexcept {
    const _KvxPixelFormat* format = src ? KvxPixelFormat_ByCode(src->pixelType) : nullptr;
    if (!format || !dst) return KvxResult_Of(KvxComponentType_Bayer, KvxResult_InvalidArgument);
    kvx::BayerOutput output{.form = kvx::BayerOutput::Samples};
    if (!kvx::Is8Bit(src->pixelType) && kvx::Is8Bit(dst->pixelType))
        output = {.form = kvx::BayerOutput::RoundedBytes, .shift = format->bitsPerComponent - 8};
    return kvx::ConvertBayerFlat(*src, *dst, algType, kvx::OrderOf(*dst), output);
}
