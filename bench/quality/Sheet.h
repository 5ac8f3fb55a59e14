/** Contact sheets: images side by side. */
#pragma once

#include <opencv2/core.hpp>
#include <string>
#include <vector>

namespace kvx::quality {

/** Rows of 8-bit images (blue, green, red) of one size, enlarged without smoothing, with white gaps. */
cv::Mat SheetOf(const std::vector<std::vector<cv::Mat>>& rows, int enlargement);

/** Writes a PNG file. Throws std::runtime_error on failure. */
void WritePng(const std::string& path, const cv::Mat& picture);

}  // namespace kvx::quality
