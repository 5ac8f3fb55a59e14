#include "KvxBayer/BayerConversion.h"
#include "KvxBayer/BayerFlat.h"
#include "KvxDemosaicing/KvxBayer.h"
#include "KvxDemosaicing/KvxBayerFlat.h"
#include "framework/PixelFormats.h"

uint32_t kvx::ConvertBayerFlat(const BayerJob& job, int algType) noexcept {
    std::unique_ptr<DemosaicingIPP> interpolator;
    switch (algType) {
        case KvxBayerAlgorithm_IPP:
            interpolator = DemosaicingIPP::Create(job.sampleSize);
            break;
        case KvxBayerAlgorithm_Bilinear:
        case KvxBayerAlgorithm_EdgeAware:
            break;
        default:
            return KvxResult_Success;
    }
    return KvxResult_Of(KvxComponentType_Bayer, ConvertBayer(job, algType, interpolator.get()));
}

uint32_t BayerToColor(const _KvxImage* src, _KvxImage* dst, int algType) noexcept {
    auto job = src && dst ? kvx::BayerJobOf(*src, *dst) : std::nullopt;
    if (!job) return KvxResult_Of(KvxComponentType_Bayer, KvxResult_InvalidArgument);
    if (job->sampleSize == 2 && kvx::Is8Bit(dst->pixelType))
        job->output = {.form = kvx::BayerOutput::RoundedBytes, .shift = kvx::BitsOf(src->pixelType) - 8};
    return kvx::ConvertBayerFlat(*job, algType);
}
