#pragma once

#include <nlohmann/json_fwd.hpp>

#include "tools/tune/TunedConversion.h"

namespace kvx::tool {

/**
 * The distribution of every sample of the mosaic, by filter: {"white", "filters": [{"name", "counts", "clipped",
 * "black"}, ...]}, 256 counts from 0 to white; clipped and black are shares of the samples at white and 0.
 */
nlohmann::ordered_json MosaicHistogram(const RawFrame& frame);

/** The same of a picture's colours: "Red", "Green", "Blue". @param picture CV_8UC3, blue first */
nlohmann::ordered_json PictureHistogram(const cv::Mat& picture);

}  // namespace kvx::tool
