/** The noise of a sensor, for frames that are made rather than taken. */
#pragma once

#include <cstdint>

#include "KvxDemosaicing/KvxTrueSense.h"

namespace kvx::tool {

/** Variance = slope x signal + intercept, with signal and noise in 12-bit codes. */
struct NoiseLine {
    double slope, intercept;

    /** Standard deviation at a signal; 0 where the line has fallen below 0. */
    double DeviationAt(double signal) const;
};

/** What the samples of one frame carry. */
struct SensorNoise {
    NoiseLine pan;     ///< behind clear filters, and without any
    NoiseLine colour;  ///< behind red, green and blue ones
};

/**
 * The noise model of a parameter record at an analog gain: between two of its five points interpolated, beyond them as
 * at the nearest one.
 */
SensorNoise NoiseAt(const tagTrueSenseParam& params, double analogGain);

/**
 * Normal deviates of mean 0 and variance 1. Each row of a frame has a stream of its own, so that rows can be filled in
 * any order. The numbers are SplitMix64's, shaped by the transform of Box and Muller: the standard library's
 * distributions give other numbers with every implementation.
 */
class NormalDeviates {
public:
    NormalDeviates(uint64_t seed, uint64_t row);

    double Next();

private:
    double NextUniform();

    uint64_t m_state;
    double m_second = 0;  // they come in pairs
    bool m_hasSecond = false;
};

}  // namespace kvx::tool
