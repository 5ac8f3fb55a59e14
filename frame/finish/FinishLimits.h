/** Ranges of the values in a finish. */
#pragma once

namespace kvx::frame {

inline constexpr double kLargestGain = 64, kLargestCoefficient = 64;
inline constexpr double kLargestExposure = 16, kLargestLevel = 65535;

}  // namespace kvx::frame
