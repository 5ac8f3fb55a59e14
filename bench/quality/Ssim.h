/** Structural similarity: how alike two pictures look, rather than how far their samples are apart. */
#pragma once

#include <opencv2/core.hpp>

namespace kvx::quality {

/**
 * Mean structural similarity of luma after Wang, Bovik, Sheikh and Simoncelli (2004), with their constants and window;
 * 1 for equal pictures. Both of 8 bits, blue, green, red; `border` pixels at each side do not count.
 */
double Ssim(const cv::Mat& original, const cv::Mat& restored, int border);

}  // namespace kvx::quality
