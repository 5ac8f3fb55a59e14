/** Black level, gain and white balance of one 12-bit sample. */
#pragma once

#include <algorithm>
#include <cstdint>

namespace kvx {

constexpr int32_t kLargestSample = 4095;

constexpr int32_t SubtractedFloor(uint16_t sample, int32_t darkFloor) {
    // The difference wraps where it has no 32-bit value.
    const auto difference = static_cast<int32_t>(uint32_t{sample} - static_cast<uint32_t>(darkFloor));
    return std::clamp(difference, 0, kLargestSample);
}

/** Out of range or not a number: the nearest of the limits, and the lower one. */
constexpr int32_t Truncated(float value) {
    constexpr float limit = 2147483520.0F;  // the largest float that an int32_t holds
    return value >= -limit ? static_cast<int32_t>(value < limit ? value : limit) : -static_cast<int32_t>(limit);
}

constexpr int32_t Gained(int32_t sample, float gain) {
    return std::clamp(Truncated(static_cast<float>(sample * 1024) * gain) >> 10, 0, kLargestSample);
}

constexpr int32_t Balanced(int32_t sample, float gain) {
    const double product = static_cast<double>(static_cast<float>(sample) * gain) + 0.5;
    return product >= 0 ? static_cast<int32_t>(std::min<double>(product, kLargestSample)) : 0;
}

}  // namespace kvx
