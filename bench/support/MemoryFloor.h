/** One pass over the memory of a conversion: a lower limit for the time of any conversion. */
#pragma once

#include <algorithm>
#include <cstring>
#include <opencv2/core.hpp>

namespace kvx::bench {

/** Reads the source once and writes the destination once, with all OpenMP threads. */
inline void CopyThrough(const cv::Mat& source, cv::Mat& destination) {
    const size_t in = source.cols * source.elemSize(), out = destination.cols * destination.elemSize();
#pragma omp parallel for
    for (int row = 0; row < source.rows; ++row)
        for (size_t done = 0; done < out; done += in)
            std::memcpy(destination.ptr(row) + done, source.ptr(row), std::min(in, out - done));
}

}  // namespace kvx::bench
