#pragma once

#include <opencv2/core.hpp>

namespace kvx::tool {

/**
 * How much more alike near samples (two and four sites apart, in both directions) are than any two: about 1 for a
 * smooth picture, 0 for noise and for a wrong width.
 */
double Continuity(const cv::Mat& samples);

}  // namespace kvx::tool
