/** A drawn frame to convert, of any size and depth. */
#pragma once

#include <opencv2/core.hpp>

#include "support/Runs.h"

namespace kvx::bench {

/**
 * A frame with edges, ramps, texture and noise: methods that choose a direction must not find it too easy.
 *
 * @return CV_8UC1 for 8 bits, otherwise CV_16UC1
 */
cv::Mat DrawnFrame(const Size& size, int depth);

}  // namespace kvx::bench
