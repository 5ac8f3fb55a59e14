#include <cstring>
#include <initializer_list>

#include "pipeline/ScratchArena.h"
#include "pipeline/SigmaFilter.h"

int32_t Alg_LowPanClean(int32_t* lowPan, int32_t w2, int32_t h2, float globalGain, float analogGain,
                        const float gains[5], const float slopes[5], const float intercepts[5], float sigma0,
                        float sigma1, float sigma2, int32_t radius0, int32_t radius1, int32_t radius2,
                        LogText_t* log) noexcept {
    using namespace kvx;
    if (w2 < 1 || h2 < 1) return kStageSuccess;
    const size_t count = size_t(w2) * h2;
    auto* copy = TakeScratch<int32_t>(count, "reflPan", log);
    auto* thresholds = copy ? TakeScratch<int32_t>(count, "thresAddr", log) : nullptr;
    if (!thresholds) return kStageFailure;
    std::memcpy(copy, lowPan, count * sizeof *copy);
    std::memset(thresholds, 0, count * sizeof *thresholds);

    float slope = 0, intercept = 0;
    Alg_CalculateNoiseParameter(analogGain, gains, slopes, intercepts, &slope, &intercept, log);
    for (const auto& [sigma, radius] : {SigmaSetting{sigma0, radius0}, {sigma1, radius1}, {sigma2, radius2}}) {
        if (radius < 1) continue;
        int32_t result =
            Alg_PanBuildGammaNoiseThreshold(copy, w2, h2, sigma, globalGain, slope, intercept, thresholds, log);
        if (result == kStageSuccess) result = Alg_IterativeSigmaFilter(lowPan, copy, w2, h2, radius, thresholds, log);
        if (result != kStageSuccess) return result;
    }
    return kStageSuccess;
}
