#include "pipeline/LogText.h"
#include "pipeline/NoiseThresholds.h"

namespace kvx {
namespace {

template <class Value>
int32_t Build(const Value* plane, int32_t width, int32_t height, const ThresholdTable& table, int32_t* thresholds) {
    for (int32_t row = 0; row < height; ++row)
        for (int32_t column = 0; column < width; ++column)
            *thresholds++ = table[LocalCode(plane, width, height, row, column)];
    return kStageSuccess;
}

}  // namespace
}  // namespace kvx

int32_t Alg_PanBuildGammaNoiseThreshold(const int32_t* plane, int32_t width, int32_t height, float sigma,
                                        float globalGain, float slope, float intercept, int32_t* thresholds,
                                        LogText_t*) noexcept {
    using namespace kvx;
    return Build(plane, width, height, ThresholdsOf(sigma, LowPanNoise(slope, intercept, globalGain)), thresholds);
}

int32_t Alg_ColorBuildGammaNoiseThreshold(const uint16_t* colour, int32_t width, int32_t height, float sigma,
                                          float gain, float slope, float intercept, int32_t* thresholds,
                                          LogText_t*) noexcept {
    using namespace kvx;
    return Build(colour, width, height, ThresholdsOf(sigma, LowColourNoise(slope, intercept, gain)), thresholds);
}
