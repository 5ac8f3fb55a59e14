/** Structural similarity of two images. */
#pragma once

#include <opencv2/core.hpp>

namespace kvx::quality {

/**
 * Mean structural similarity of luma after Wang, Bovik, Sheikh and Simoncelli (2004), with their constants and window;
 * 1 for equal images. Both have 8 bits, blue, green, red; `border` pixels at each side are excluded.
 */
double Ssim(const cv::Mat& original, const cv::Mat& restored, int border);

}  // namespace kvx::quality
