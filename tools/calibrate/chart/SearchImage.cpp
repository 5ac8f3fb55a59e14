#include "tools/calibrate/chart/SearchImage.h"

#include <algorithm>
#include <opencv2/imgproc.hpp>

namespace kvx::tool {
namespace {

/** Larger pictures are searched from this size on: a chart in them that needs more is too small to measure. */
constexpr int kLargest = 3200;
constexpr int kSmallest = 40;

}  // namespace

std::vector<SearchImage> SearchPyramid(const cv::Mat_<cv::Vec3f>& linear) {
    std::vector<SearchImage> pyramid;
    SearchImage image{linear, 1};
    while (std::max(image.linear.cols, image.linear.rows) >= kSmallest) {
        if (std::max(image.linear.cols, image.linear.rows) <= kLargest) {
            pyramid.push_back(image);
        }
        // Whole pairs only, so that a pixel stands for exactly four.
        const cv::Size half(image.linear.cols / 2, image.linear.rows / 2);
        if (half.empty()) {
            break;
        }
        SearchImage smaller{{}, 2 * image.scale};
        cv::resize(image.linear(cv::Rect({}, half * 2)), smaller.linear, half, 0, 0, cv::INTER_AREA);
        image = smaller;
    }
    return pyramid;
}

}  // namespace kvx::tool
