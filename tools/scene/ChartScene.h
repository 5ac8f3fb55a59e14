#pragma once

#include <opencv2/core.hpp>
#include <vector>

namespace kvx::tool {

/** A colour chart on a grey wall with a few coloured discs. */
struct ChartScene {
    cv::Mat_<cv::Vec3f> light;  ///< linear sRGB, red first, white is 1
    cv::Matx33d toScene;        ///< from places on the chart, see PatchCentre()
};

/** @param corners of the card in the scene, from that at dark skin on, as the card has them */
ChartScene DrawChartScene(const std::vector<cv::Point2f>& corners, cv::Size size);

}  // namespace kvx::tool
