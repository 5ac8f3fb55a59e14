/** The arithmetic of the sigma filter. */
#pragma once

#include <cstdint>

namespace kvx {

/** One pass: the threshold in standard deviations; a radius below 1 skips the pass. */
struct SigmaSetting {
    float sigma;
    int32_t radius;
};

/** Larger windows cost much and gain nothing. */
constexpr int32_t kLargestSigmaRadius = 16;

/** Differences lose so many bits before they are summed: the sum of the largest window fits into 32 bits. */
constexpr int kSigmaSumShift = 8;

/** A value moved by the mean of `count` differences. */
constexpr int32_t SigmaMean(int32_t centre, int32_t sum, int32_t count) {
    const float mean = static_cast<float>(sum) / static_cast<float>(count);
    return centre + static_cast<int32_t>(mean) * (1 << kSigmaSumShift);
}

}  // namespace kvx
