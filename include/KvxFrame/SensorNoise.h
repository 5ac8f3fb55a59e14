/**
 * @file
 * The noise of a sensor: for frames that are simulated, and for conversions that remove it.
 */
#ifndef KVXFRAME_SENSORNOISE_H
#define KVXFRAME_SENSORNOISE_H

#include "KvxDemosaicing/KvxTrueSense.h"

namespace kvx::frame {

/** Noise variance = slope x signal + intercept, with signal (above black) and noise in 12-bit values. */
struct NoiseLine {
    double slope;      ///< variance per unit of the signal
    double intercept;  ///< variance without light

    /** Standard deviation at a signal; 0 where the variance would be negative. */
    KVX_API double DeviationAt(double signal) const;
};

/** Noise of the samples of a frame. */
struct SensorNoise {
    NoiseLine pan;     ///< clear sites, and mono frames
    NoiseLine colour;  ///< red, green and blue sites
};

/**
 * The noise model of a parameter record at an analog gain: interpolated between its five calibration points, constant
 * beyond the first and the last.
 *
 * @param analogGain not negative
 * @throws Error 0x80070004 for a negative gain or NaN
 */
KVX_API SensorNoise NoiseAt(const tagTrueSenseParam& params, double analogGain);

/** The same for the built-in model of TrueSense_DefaultValues(), calibrated from 11.04 to 36.77. */
KVX_API SensorNoise NoiseAt(double analogGain);

}  // namespace kvx::frame

#endif
