/**
 * @file
 * Simulation of a sensor: frames from pictures. For tests, benchmarks and work without a camera.
 */
#ifndef KVXFRAME_MOSAIC_H
#define KVXFRAME_MOSAIC_H

#include <array>
#include <cstdint>
#include <optional>

#include "KvxFrame/SensorNoise.h"
#include "KvxFrame/View.h"

namespace kvx::frame {

/** Properties of the simulated sensor. */
struct Sensor {
    /** Weights of red, green and blue at clear sites and in mono frames: finite, not negative, not all 0. */
    std::array<double, 3> panWeights = {1, 1, 1};
    bool isLinear = false;                  ///< whether to undo the picture's sRGB encoding first
    uint32_t pictureWhite = 0;              ///< sample value of white, larger ones count as white; 0: 2^bits - 1
    std::optional<SensorNoise> noise = {};  ///< added to the samples before they are rounded and clamped
    uint64_t noiseSeed = 1;                 ///< seed of the noise: the same seed gives the same frame
    double blackLevel = 0;                  ///< sample value without light: 0 or more, less than white
    /**
     * Share of the light in the corners, of red, green and blue: more than 0, at most 1. The light falls with the
     * square of the distance from the centre. Clear and mono sites have the mean.
     */
    std::array<double, 3> cornerLight = {1, 1, 1};
    double fixedPattern = 0;   ///< standard deviation of what each site adds to all its samples, in samples
    uint32_t hotPixels = 0;    ///< number of sites that add 1 to 100 % of white, small values more often
    uint32_t deadPixels = 0;   ///< number of sites that see half of the light or less
    uint64_t patternSeed = 1;  ///< seed of fixed pattern, hot and dead pixels
};

/**
 * Simulates the frame of a sensor that sees a picture. Black becomes the black level, the picture's white the frame's
 * white; values between are rounded half up. The frame is the same for any number of threads.
 *
 * @param picture a colour picture of any order and depth (a fourth sample is ignored), or a Plain mono picture
 * @param frame   any mono, Bayer or TrueSense format, in any layout; of the picture's size; must not overlap the
 * picture. Only samples are written
 * @param sensor  see Sensor
 * @param threads as in Converter::SetThreads()
 * @throws Error 0x80070008 for null data; 0x80070004 for a value of `sensor` or `threads` out of range; 0x80070007 for
 *         formats or sizes that do not fit
 */
KVX_API void MakeMosaic(const SourceView& picture, const DestinationView& frame, const Sensor& sensor = {},
                        int threads = 0);

}  // namespace kvx::frame

#endif
