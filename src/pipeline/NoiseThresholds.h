/** How much two samples of the same brightness can differ by noise alone. */
#pragma once

#include <array>
#include <cstdint>

#include "pipeline/GammaCodes.h"

namespace kvx {

/** 16.16 gamma codes, by the gamma code of the brightness. */
using ThresholdTable = std::array<int32_t, kGammaCodes>;

/** The noise of raw samples, of variance slope x + intercept, and how processing has scaled it since. */
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
 * it is. Values at the border stand for themselves.
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

/** Gains below 1 are not applied. */
constexpr float AppliedGain(float globalGain) {
    return globalGain > 1 ? globalGain : 1;
}

/** The noise of the low-resolution pan plane. Measured: averaging leaves half of a raw sample's deviation. */
constexpr NoiseModel LowPanNoise(float slope, float intercept, float globalGain) {
    return {slope, intercept, AppliedGain(globalGain), 0.5F};
}

/** The noise of the colour differences: that of the mean of two samples. */
constexpr NoiseModel LowColourNoise(float slope, float intercept, float gain) {
    return {slope, intercept, gain, 0.70710678F};
}

/**
 * The gain that the noise of a colour has gone through. Which cell holds which colour is not known here: the root mean
 * square of the balances, green counted twice as in the mosaic, is right for the noise as a whole.
 */
float LowColourGain(float globalGain, float redBalance, float greenBalance, float blueBalance) noexcept;

}  // namespace kvx
