#pragma once

#include <array>
#include <opencv2/core.hpp>
#include <optional>

namespace kvx::tool {

/** Where a chart is in a frame. */
struct ChartPlace {
    cv::Matx33d toFrame;  ///< from places on the chart, see PatchCentre(), to pixels of the frame
    double agreement;     ///< of the colours, see ChartAgreement()
};

/** Below this agreement given corners cannot be right. */
inline constexpr double kLeastAgreementAtCorners = 0.4;

/**
 * Finds a 24-patch chart in a picture in linear light, in any orientation, mirrored or not, and in perspective.
 * std::nullopt if there is none; of several the one with the best colours.
 */
std::optional<ChartPlace> FindChart(const cv::Mat_<cv::Vec3f>& linear);

/**
 * The chart with these corners of its field of patches, in their order around it, from any corner in any direction: the
 * colours decide which is which.
 */
ChartPlace ChartAt(const std::array<cv::Point2d, 4>& corners, const cv::Mat_<cv::Vec3f>& linear);

/** The corners of the field of patches: at dark skin, bluish green, black, white. */
std::array<cv::Point2d, 4> ChartCorners(const cv::Matx33d& toFrame);

}  // namespace kvx::tool
