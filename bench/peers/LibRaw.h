/** LibRaw's interpolations, without the steps before and after. */
#pragma once

#include "peers/Peers.h"

namespace kvx::peers {

std::unique_ptr<Conversion> LibRawLinear(const cv::Mat& frame, int depth);
std::unique_ptr<Conversion> LibRawVng(const cv::Mat& frame, int depth);
std::unique_ptr<Conversion> LibRawPpg(const cv::Mat& frame, int depth);
std::unique_ptr<Conversion> LibRawAhd(const cv::Mat& frame, int depth);
std::unique_ptr<Conversion> LibRawDcb(const cv::Mat& frame, int depth);
std::unique_ptr<Conversion> LibRawDht(const cv::Mat& frame, int depth);
std::unique_ptr<Conversion> LibRawAahd(const cv::Mat& frame, int depth);

}  // namespace kvx::peers
