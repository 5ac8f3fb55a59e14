#pragma once

#include <cstdint>

#include <opencv2/core.hpp>

namespace kvx::tool {

/** A picture as files hold it. */
struct Picture {
    cv::Mat pixels;    ///< CV_8U or CV_16U, one channel or three (blue, green, red)
    uint32_t maximum;  ///< sample value of white
};

}  // namespace kvx::tool
