#pragma once

namespace kvx::tool {

/**
 * A site is defective if it differs from its surroundings by more than kOutlier deviations of the measured means (two
 * of a million good sites do), and by more than kDefect deviations of the noise of a single frame: what is less does
 * not show.
 */
inline constexpr double kOutlier = 4.6, kDefect = 4;

}  // namespace kvx::tool
