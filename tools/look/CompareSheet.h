#pragma once

#include "tools/look/Comparison.h"

namespace kvx::tool {

/**
 * A sheet with a column for each algorithm, and the reference (CV_8UC3 or empty) before them: whole pictures, enlarged
 * crops, and with a reference the differences from it.
 */
cv::Mat DrawComparison(const std::string& title, const std::vector<AlgorithmResult>& results, const cv::Mat& reference,
                       const std::vector<cv::Rect>& crops);

}  // namespace kvx::tool
