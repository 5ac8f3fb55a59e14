#pragma once

#include <opencv2/core.hpp>
#include <vector>

namespace kvx::tool {

/** The place that a projective map gives. */
inline cv::Point2d Projected(const cv::Matx33d& map, cv::Point2d place) {
    const cv::Vec3d result = map * cv::Vec3d(place.x, place.y, 1);
    return {result[0] / result[2], result[1] / result[2]};
}

/** The projective map with the least squared errors for at least four pairs of places, no three on a line. */
cv::Matx33d FitHomography(const std::vector<cv::Point2d>& from, const std::vector<cv::Point2d>& to);

}  // namespace kvx::tool
