#pragma once

#include <array>
#include <optional>

#include "tools/Picture.h"
#include "tools/RawFrame.h"
#include "tools/SensorNoise.h"

namespace kvx::tool {

/** How a sensor sees a picture. */
struct Sensor {
    std::array<double, 3> panWeights = {1, 1, 1};  ///< of red, green and blue behind a clear filter; not negative
    bool isLinear = false;                         ///< the picture's sRGB encoding is undone first
    std::optional<SensorNoise> noise = {};         ///< added to what the sensor sees, then rounded and clamped
    uint64_t noiseSeed = 1;                        ///< of the noise: the same seed, the same frame
};

/** What a sensor of this mono or mosaic format would see of the picture, its samples not packed. */
RawFrame MakeMosaic(const Picture& picture, const frame::Format& format, const Sensor& sensor = {});

}  // namespace kvx::tool
