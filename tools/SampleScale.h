#pragma once

#include <cstdint>

#include <opencv2/core.hpp>

namespace kvx::tool {

/** Maps 0 to `white` onto 0 to `newWhite`, rounded to nearest, halves up. */
constexpr uint32_t ScaleSample(uint64_t sample, uint64_t white, uint64_t newWhite) {
    return static_cast<uint32_t>((2 * sample * newWhite + white) / (2 * white));
}

/** Scales all samples of a CV_16U picture from `white` to 65535, which picture files take for white. */
void StretchToWhite(cv::Mat& picture, uint32_t white);

}  // namespace kvx::tool
