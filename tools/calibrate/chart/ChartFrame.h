#pragma once

#include <opencv2/core.hpp>
#include <string>

#include "KvxFrame/CameraProfile.h"
#include "tools/files/RawFrame.h"

namespace kvx::tool {

/** The values of black and white in a frame. */
struct ChartLevels {
    frame::Levels black;
    frame::Levels white;
};

/** The frame as a picture in linear light, red first, about 0 for black and 1 for white, not balanced. */
cv::Mat_<cv::Vec3f> LinearPicture(const RawFrame& frame, const ChartLevels& levels, const std::string& name);

}  // namespace kvx::tool
