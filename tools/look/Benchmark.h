#pragma once

#include <cstdint>
#include <opencv2/core.hpp>
#include <string>
#include <vector>

#include "KvxFrame/Converter.h"

namespace kvx::tool {

/** Conversion speed for frames of a format and size. */
struct Throughput {
    frame::Format format;
    uint32_t width;
    uint32_t height;
    std::string algorithm;
    bool isFinished;  ///< with white balance, colour matrix and sRGB curve
    uint64_t frameBytes;
    double seconds;  ///< of one frame, the median

    double FramesPerSecond() const {
        return 1 / seconds;
    }
    double PixelsPerSecond() const {
        return static_cast<double>(width) * height / seconds;
    }
    double BytesPerSecond() const {
        return static_cast<double>(frameBytes) / seconds;
    }
};

/** What to measure, and for how long. */
struct BenchmarkPlan {
    std::vector<frame::Format> formats;
    std::vector<cv::Size> sizes;
    std::vector<std::string> algorithms;  ///< empty: all that a family has; others are left out
    int threads = 0;                      ///< 0: as OpenMP is set
    double budget = 0;                    ///< seconds for each measurement
};

/**
 * Measures conversions of the drawn test scene to 8 bits, in memory, finished ones first. Throws what the frame layer
 * throws.
 */
std::vector<Throughput> MeasureThroughput(const BenchmarkPlan& plan);

}  // namespace kvx::tool
