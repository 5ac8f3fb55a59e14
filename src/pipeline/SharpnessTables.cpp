#include <cmath>

#include "pipeline/Sharpness.h"

namespace kvx {

SharpnessTables SharpnessTablesOf(float sharpenParam, float highLumaNoise, float lowLumaNoise) noexcept {
    SharpnessTables tables{};
    for (int32_t code = 0; code < kGammaCodes; ++code) {
        const float root = std::sqrt(static_cast<float>(Gamma10toLinear12[code]));
        tables.edgeScale[code] = static_cast<float>((32.0 - root) * sharpenParam * 0.03125);
        tables.noiseGain[code] = static_cast<float>(root * 0.03125 * (highLumaNoise - lowLumaNoise) + lowLumaNoise);
    }
    return tables;
}

}  // namespace kvx
