#include "tools/calibrate/SiteStatistics.h"

#include <opencv2/imgproc.hpp>

namespace kvx::tool {
namespace {

/** 255 where `isThere(row, column)`, which repeats after four rows and columns. */
template <typename IsThere>
cv::Mat RepeatedMask(const cv::Size& size, const IsThere& isThere) {
    cv::Mat mask(size, CV_8U);
    for (int row = 0; row < size.height; ++row) {
        for (int column = 0; column < size.width; ++column) {
            mask.at<uint8_t>(row, column) = isThere(row % 4, column % 4) ? 255 : 0;
        }
    }
    return mask;
}

}  // namespace

cv::Mat LocalMedian(const cv::Mat& map, const frame::Format& format) {
    const int side = static_cast<int>(frame::TileSide(format));
    cv::Mat medians(map.size(), CV_32F);
    for (int top = 0; top < std::min(side, map.rows); ++top) {
        for (int left = 0; left < std::min(side, map.cols); ++left) {
            cv::Mat plane((map.rows - top + side - 1) / side, (map.cols - left + side - 1) / side, CV_32F);
            plane.forEach<float>(
                [&](float& value, const int* at) { value = map.at<float>(top + at[0] * side, left + at[1] * side); });
            cv::Mat smooth;
            cv::medianBlur(plane, smooth, 5);
            smooth.forEach<float>([&](const float& value, const int* at) {
                medians.at<float>(top + at[0] * side, left + at[1] * side) = value;
            });
        }
    }
    return medians;
}

cv::Mat SitesOfFilter(const frame::Format& format, const cv::Size& size, size_t filter) {
    return RepeatedMask(size, [&](int row, int column) { return frame::FilterIndex(format, row, column) == filter; });
}

cv::Mat ClearSites(const frame::Format& format, const cv::Size& size) {
    return RepeatedMask(size, [&](int row, int column) {
        const char letter = frame::FilterAt(format, row, column);
        return letter == 'W' || letter == 'Y';
    });
}

double ClippedDeviation(const cv::Mat& map, const cv::Mat& mask) {
    constexpr int kPasses = 4;
    constexpr double kClip = 5;
    cv::Mat kept = mask.clone();
    cv::Scalar mean, deviation;
    for (int pass = 0; pass < kPasses; ++pass) {
        cv::meanStdDev(map, mean, deviation, kept);
        kept = mask & (cv::abs(map - mean[0]) <= kClip * deviation[0]);
    }
    return deviation[0];
}

std::vector<frame::Site> SitesOf(const cv::Mat& mask) {
    std::vector<cv::Point> points;
    cv::findNonZero(mask, points);
    std::vector<frame::Site> sites;
    sites.reserve(points.size());
    for (const cv::Point& point : points) {
        sites.push_back({static_cast<uint32_t>(point.x), static_cast<uint32_t>(point.y)});
    }
    return sites;
}

}  // namespace kvx::tool
