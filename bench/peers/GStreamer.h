/** GStreamer's element bayer2rgb. */
#pragma once

#include "peers/Peers.h"

namespace kvx::peers {

/** The frame goes into the element's pad and the picture is taken from it, in the calling thread: no pipeline, no copy.
 */
std::unique_ptr<Conversion> GStreamerBayer2Rgb(const cv::Mat& frame, int depth);

std::string GStreamerVersion();

}  // namespace kvx::peers
