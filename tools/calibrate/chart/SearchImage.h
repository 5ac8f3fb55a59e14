#pragma once

#include <opencv2/core.hpp>
#include <vector>

namespace kvx::tool {

/** A colour picture in which a chart is searched: linear light, one size of a pyramid. */
struct SearchImage {
    cv::Mat_<cv::Vec3f> linear;  ///< red, green, blue from 0; no white balance needed
    double scale;                ///< pixels of the frame for a pixel here
};

/** The picture in halves of its size, largest first, down to one in which a chart has too few pixels. */
std::vector<SearchImage> SearchPyramid(const cv::Mat_<cv::Vec3f>& linear);

}  // namespace kvx::tool
