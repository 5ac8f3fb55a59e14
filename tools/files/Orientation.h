#pragma once

#include <cstdint>

#include <opencv2/core.hpp>

namespace kvx::tool {

/** Turns and mirrors a picture from the stored orientation, 1 to 8 as Exif has it, to the upright one. */
void MakeUpright(cv::Mat& picture, uint64_t orientation);

}  // namespace kvx::tool
