#pragma once

#include <opencv2/core.hpp>

#include "tools/Bytes.h"
#include "tools/Formats.h"

namespace kvx::tool {

/** A frame of an unpacked mosaic format: CV_8UC1 or CV_16UC1, samples right-aligned. */
struct RawFrame {
    const PixelFormat* format;
    cv::Mat samples;
};

/** The samples row by row without padding: bytes, or little-endian words. */
Bytes EncodeRaw(const cv::Mat& samples);

}  // namespace kvx::tool
