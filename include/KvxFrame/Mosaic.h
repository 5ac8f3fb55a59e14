/**
 * @file
 * Frames out of pictures: what a sensor behind a colour filter would see. For tests, for benchmarks, and for who has no
 * camera.
 */
#ifndef KVXFRAME_MOSAIC_H
#define KVXFRAME_MOSAIC_H

#include <array>
#include <cstdint>
#include <optional>

#include "KvxDemosaicing/KvxTrueSense.h"
#include "KvxFrame/View.h"

namespace kvx::frame {

/** Variance = slope x signal + intercept, with signal and noise in 12-bit codes. */
struct NoiseLine {
    double slope;      ///< variance for each code of the signal
    double intercept;  ///< variance without light

    /** Standard deviation at a signal; 0 where the line has fallen below 0. */
    KVX_API double DeviationAt(double signal) const;
};

/** What the samples of one frame carry. */
struct SensorNoise {
    NoiseLine pan;     ///< behind clear filters, and without any
    NoiseLine colour;  ///< behind red, green and blue ones
};

/**
 * The noise model of a parameter record at an analog gain: between two of its five points interpolated, beyond them as
 * at the nearest one.
 *
 * @param analogGain not negative. @throws Error 0x80070004
 */
KVX_API SensorNoise NoiseAt(const tagTrueSenseParam& params, double analogGain);

/** The same of the built-in model, TrueSense_DefaultValues(): calibrated from 11.04 to 36.77. */
KVX_API SensorNoise NoiseAt(double analogGain);

/** How a sensor sees a picture. */
struct Sensor {
    /** Of red, green and blue behind a clear filter, and without any: finite, not negative, not all 0. */
    std::array<double, 3> panWeights = {1, 1, 1};
    bool isLinear = false;      ///< the picture's sRGB encoding is undone first
    uint32_t pictureWhite = 0;  ///< the picture's sample of white, what is above counts as it; 0: 2^bits - 1
    std::optional<SensorNoise> noise = {};  ///< added to what the sensor sees, then rounded and clamped
    uint64_t noiseSeed = 1;                 ///< of the noise: the same seed, the same frame
};

/**
 * What a sensor of a frame's format would see of a picture: black stays 0, the picture's white becomes the frame's,
 * samples between are rounded half up. The same frame for any number of threads.
 *
 * @param picture colour of any order and depth (a fourth sample counts for nothing), or grey as Plain mono
 * @param frame   any mono, Bayer or TrueSense format, in any layout; the picture's size; no overlap with the picture.
 *                Only samples are written
 * @param threads as in Converter::SetThreads()
 * @throws Error 0x80070008 for null data; 0x80070004 for a number of `sensor` or `threads` out of range; 0x80070007 for
 *         all else that does not fit
 */
KVX_API void MakeMosaic(const SourceView& picture, const DestinationView& frame, const Sensor& sensor = {},
                        int threads = 0);

}  // namespace kvx::frame

#endif
