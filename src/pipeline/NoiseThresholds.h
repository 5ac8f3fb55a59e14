/** How far two samples of one brightness may lie apart and differ by noise alone. */
#pragma once

#include <array>
#include <cstdint>

#include "pipeline/GammaCodes.h"

namespace kvx {

/** 16.16 gamma codes, by the gamma code of the brightness. */
using ThresholdTable = std::array<int32_t, kGammaCodes>;

/** The noise of raw samples, of variance slope x + intercept, and what becomes of it. */
struct NoiseModel {
    float slope, intercept;
    float gain;   ///< that the samples have been multiplied by since
    float share;  ///< what averaging has left of a standard deviation
};

/**
 * `sigma` standard deviations of the noise. A deviation in linear values becomes one in gamma codes through the slope
 * of the gamma curve (Foi et al., "Practical Poissonian-Gaussian noise modeling", TIP 2008). Not a number gives 0.
 */
ThresholdTable ThresholdsOf(float sigma, const NoiseModel& noise) noexcept;

/**
 * The code at `at`, from the binomial mean of its 3x3 neighbourhood: a noisy sample alone says too little of how bright
 * it is. Places at the border speak for themselves.
 */
template <class Value>
int32_t LocalCode(const Value* plane, int32_t width, int32_t height, int32_t row, int32_t column) noexcept {
    constexpr int fraction = sizeof(Value) == sizeof(int32_t) ? kFractionBits : 0;
    const Value* at = plane + int64_t{row} * width + column;
    int32_t sum = *at * 16;
    if (row > 0 && row < height - 1 && column > 0 && column < width - 1) {
        const Value *up = at - width, *down = at + width;
        sum = up[-1] + up[1] + down[-1] + down[1] + 2 * (up[0] + down[0] + at[-1] + at[1]) + 4 * at[0];
    }
    const int32_t code = sum >> (4 + fraction);
    return code < 0 ? 0 : code >= kGammaCodes ? kGammaCodes - 1 : code;
}

// Found by measurement: what is left of the noise of a raw sample in a value of a low-resolution plane.
constexpr float kLowPanShare = 0.5F;
constexpr float kLowColourShare = 0.70710678F;  // two samples' mean

/** Gains below 1 are not applied. */
constexpr float AppliedGain(float globalGain) {
    return globalGain > 1 ? globalGain : 1;
}

}  // namespace kvx
