#pragma once

#include <opencv2/core.hpp>
#include <vector>

namespace kvx::tool {

/**
 * The places, at least their own size apart, where several pictures of one scene (CV_8UC3, one size) differ most; for
 * a single picture, where it changes most from pixel to pixel. At most `count`, the busiest first.
 *
 * @param size of a place, limited to that of the pictures
 */
std::vector<cv::Rect> SelectCrops(const std::vector<cv::Mat>& pictures, cv::Size size, size_t count);

}  // namespace kvx::tool
