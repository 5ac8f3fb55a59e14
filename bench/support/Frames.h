/** Frames to convert and images to write, of any size and depth. */
#pragma once

#include <opencv2/core.hpp>

#include "support/Runs.h"

namespace kvx::bench {

/**
 * A frame with edges, ramps, texture and noise, so that methods that choose a direction have some work.
 *
 * @return CV_8UC1 for 8 bits, otherwise CV_16UC1
 */
cv::Mat DrawnFrame(const Size& size, int depth);

/** A frame of random samples, as DrawnFrame(). */
cv::Mat RandomFrame(const Size& size, int depth, int paddingPixels = 0);

/** A black image of three channels. Its memory has been written, so that page faults do not count as conversion time.
 */
cv::Mat BlackImage(const Size& size, int sampleBytes, int paddingPixels = 0);

}  // namespace kvx::bench
