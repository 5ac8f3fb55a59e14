#include "KvxBayer/BayerFlat.h"
#include "KvxDemosaicing/KvxBayerFlat.h"
#include "framework/PixelFormats.h"

uint32_t BayerToColor(const _KvxImage* src, _KvxImage* dst, int algType) noexcept {
    auto job = src && dst ? kvx::BayerJobOf(*src, *dst) : std::nullopt;
    if (!job) return KvxResult_Of(KvxComponentType_Bayer, KvxResult_InvalidArgument);
    if (job->sampleSize == 2 && kvx::Is8Bit(dst->pixelType))
        job->output = {.form = kvx::BayerOutput::RoundedBytes, .shift = kvx::BitsOf(src->pixelType) - 8};
    return kvx::ConvertBayerFlat(*job, algType);
}
