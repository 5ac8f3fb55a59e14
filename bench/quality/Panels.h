/** Drawn test images that cause visible demosaicing faults. */
#pragma once

#include <opencv2/core.hpp>

namespace kvx::quality {

constexpr int kPanelSize = 128;  // pixels in a row, and rows
constexpr int kPanelCount = 4;

/** Zone plate, adjacent colours, a fan of thin lines, a picket fence. 8 bits; blue, green, red. */
cv::Mat DrawPanel(int number);

}  // namespace kvx::quality
