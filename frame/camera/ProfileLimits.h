/** Ranges of the values in a camera profile, which its checks and its correction share. */
#pragma once

#include <cstdint>

namespace kvx::frame {

inline constexpr uint32_t kMostNodes = 1024;
/** Gains of shading are fixed-point numbers of 15 bits, 12 of them binary places. */
inline constexpr int kShadingPlaces = 12;
inline constexpr float kLargestShadingGain = 7.99F;
inline constexpr double kLargestGain = 64, kLargestCoefficient = 64;  // as of a Finish

}  // namespace kvx::frame
