/** What the filter of colour differences knows about gains. */
#pragma once

#include <cmath>

#include "pipeline/NoiseThresholds.h"

namespace kvx {

/**
 * The gain that the noise of a colour has gone through. Which cell holds which colour is not known here: the root mean
 * square of the balances, green counted twice as in the mosaic, is right for the noise as a whole.
 */
inline float LowColourGain(float globalGain, float red, float green, float blue) {
    return AppliedGain(globalGain) * std::sqrt((red * red + 2 * (green * green) + blue * blue) * 0.25F);
}

}  // namespace kvx
