#pragma once

#include <cstdint>
#include <opencv2/core.hpp>

namespace kvx::quality {

/** An image to make a frame from. */
struct Picture {
    cv::Mat pixels;  ///< CV_8UC3 or CV_16UC3: blue, green, red
    uint32_t white;  ///< sample value of white
};

}  // namespace kvx::quality
