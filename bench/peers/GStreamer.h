/** GStreamer's element bayer2rgb. */
#pragma once

#include "peers/Peers.h"

namespace kvx::peers {

/** Pushes the frame into the element's pad and takes the image in the calling thread, without a pipeline or a copy. */
std::unique_ptr<Conversion> GStreamerBayer2Rgb(const cv::Mat& frame, int depth);

std::string GStreamerVersion();

}  // namespace kvx::peers
