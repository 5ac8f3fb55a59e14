#pragma once

#include <array>

#include "tools/Picture.h"
#include "tools/RawFrame.h"

namespace kvx::tool {

/** How a sensor sees a picture. */
struct Sensor {
    std::array<double, 3> panWeights = {1, 1, 1};  ///< of red, green and blue behind a clear filter; not negative
    bool isLinear = false;                         ///< the picture's sRGB encoding is undone first
};

/** What a sensor of this mono or mosaic format would see of the picture, its samples not packed. */
RawFrame MakeMosaic(const Picture& picture, const frame::Format& format, const Sensor& sensor = {});

}  // namespace kvx::tool
