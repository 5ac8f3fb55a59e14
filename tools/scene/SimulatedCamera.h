#pragma once

#include <string>
#include <vector>

#include "tools/files/RawFrame.h"

namespace kvx::tool {

struct NamedFrame {
    std::string name;  ///< such as "dark1"
    RawFrame frame;
};

/**
 * Frames of a simulated 12-bit Bayer camera that has not been calibrated: four dark and four flat frames, a colour
 * chart, and the test scene. It sees warm light through filters that overlap, has a black level, noise, a fixed
 * pattern, hot and dead pixels, and darker corners.
 */
std::vector<NamedFrame> SimulatedCameraFrames();

}  // namespace kvx::tool
