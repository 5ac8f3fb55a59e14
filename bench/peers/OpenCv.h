/** OpenCV's Bayer conversions. */
#pragma once

#include "peers/Peers.h"

namespace kvx::peers {

std::unique_ptr<Conversion> OpenCvBilinear(const cv::Mat& frame, int depth);
std::unique_ptr<Conversion> OpenCvEdgeAware(const cv::Mat& frame, int depth);
std::unique_ptr<Conversion> OpenCvVng(const cv::Mat& frame, int depth);

}  // namespace kvx::peers
