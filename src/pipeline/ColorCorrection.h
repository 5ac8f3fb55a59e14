/** The arithmetic of colour correction. */
#pragma once

#include <algorithm>

#include "pipeline/GammaCodes.h"
#include "pipeline/RawSamples.h"

namespace kvx {

/** The linear value of a 16.16 gamma code. */
inline float LinearOf(int32_t value) {
    return static_cast<float>(Gamma10toLinear12[CodeOf(value)]);
}

/** A row of the colour matrix applied to linear values, within 0 to 4095. */
inline int32_t Corrected(const float row[3], const float linear[3]) {
    return std::clamp(Truncated(row[0] * linear[0] + row[1] * linear[1] + row[2] * linear[2]), 0, kLargestSample);
}

}  // namespace kvx
