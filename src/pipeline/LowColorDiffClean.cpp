#include <cstring>
#include <initializer_list>

#include "pipeline/NoiseThresholds.h"
#include "pipeline/ScratchArena.h"
#include "pipeline/SigmaFilter.h"

namespace kvx {
namespace {

/** One of the four phases of a 2x2 mosaic, as a plane of its own. */
struct Phase {
    int32_t row, column;    // of its first cell
    int32_t width, height;  // in cells of the phase

    Phase(int index, int32_t w2, int32_t h2)
        : row(index / 2), column(index % 2), width((w2 - column + 1) / 2), height((h2 - row + 1) / 2) {}
    size_t Count() const {
        return size_t(width) * height;
    }
    size_t At(int32_t i, int32_t j, int32_t w2) const {
        return (size_t{2} * i + row) * w2 + size_t{2} * j + column;
    }
};

/** Memory for the largest phase. */
struct PhasePlanes {
    uint16_t* levels;
    int32_t *differences, *copy, *thresholds;
};

int32_t CleanPhase(const Phase& phase, const PhasePlanes& planes, float gain, float slope, float intercept,
                   std::initializer_list<SigmaSetting> passes, LogText_t* log) {
    std::memcpy(planes.copy, planes.differences, phase.Count() * sizeof *planes.copy);
    for (const auto& [sigma, radius] : passes) {
        if (radius < 1) continue;
        int32_t result = Alg_ColorBuildGammaNoiseThreshold(planes.levels, phase.width, phase.height, sigma, gain, slope,
                                                           intercept, planes.thresholds, log);
        if (result == kStageSuccess)
            result = Alg_IterativeSigmaFilter(planes.differences, planes.copy, phase.width, phase.height, radius,
                                              planes.thresholds, log);
        if (result != kStageSuccess) return result;
    }
    return kStageSuccess;
}

}  // namespace
}  // namespace kvx

int32_t Alg_LowColorDiffClean(const uint16_t* lowColour, int32_t* lowColorDiff, int32_t w2, int32_t h2,
                              float globalGain, float redBalance, float greenBalance, float blueBalance,
                              float analogGain, const float gains[5], const float slopes[5], const float intercepts[5],
                              float sigma0, float sigma1, float sigma2, int32_t radius0, int32_t radius1,
                              int32_t radius2, LogText_t* log) noexcept {
    using namespace kvx;
    if (w2 < 1 || h2 < 1) return kStageSuccess;
    const size_t largest = Phase(0, w2, h2).Count();
    PhasePlanes planes{};
    planes.differences = TakeScratch<int32_t>(largest, "phaseDiff", log);
    if (planes.differences) planes.copy = TakeScratch<int32_t>(largest, "reflDiff", log);
    if (planes.copy) planes.thresholds = TakeScratch<int32_t>(largest, "thresAddr", log);
    if (planes.thresholds) planes.levels = TakeScratch<uint16_t>(largest, "phaseColor", log);
    if (!planes.levels) return kStageFailure;

    float slope = 0, intercept = 0;
    Alg_CalculateNoiseParameter(analogGain, gains, slopes, intercepts, &slope, &intercept, log);
    const float gain = LowColourGain(globalGain, redBalance, greenBalance, blueBalance);
    for (int index = 0; index < 4; ++index) {
        const Phase phase(index, w2, h2);
        for (int32_t i = 0, k = 0; i < phase.height; ++i)
            for (int32_t j = 0; j < phase.width; ++j, ++k) {
                planes.differences[k] = lowColorDiff[phase.At(i, j, w2)];
                planes.levels[k] = lowColour[phase.At(i, j, w2)];
            }
        const int32_t result = CleanPhase(phase, planes, gain, slope, intercept,
                                          {{sigma0, radius0}, {sigma1, radius1}, {sigma2, radius2}}, log);
        if (result != kStageSuccess) return result;
        for (int32_t i = 0, k = 0; i < phase.height; ++i)
            for (int32_t j = 0; j < phase.width; ++j, ++k) lowColorDiff[phase.At(i, j, w2)] = planes.differences[k];
    }
    return kStageSuccess;
}
