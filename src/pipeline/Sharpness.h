/** The arithmetic of sharpening. */
#pragma once

#include <algorithm>
#include <array>

#include "pipeline/GammaCodes.h"

namespace kvx {

struct SharpnessTables {
    std::array<float, kGammaCodes> edgeScale, noiseGain;  ///< by display values 0 to 255

    /**
     * The value to add to the colours of a pixel.
     *
     * @param pan,low display values of the pan plane and of the low-pass pan plane
     * @param smooth the latter smoothed, 16.16
     */
    float Detail(int32_t pan, int32_t low, int32_t smooth, int32_t activity, float maxSharpen) const {
        constexpr int32_t white = 255;
        const int32_t level = smooth / kCodeUnit;
        const float ratio = static_cast<float>(activity) / edgeScale[std::clamp(level, 0, white)] - 1.0F;
        const float positive = 0.0F > ratio ? 0.0F : ratio;
        const float amount = positive < maxSharpen ? positive : maxSharpen;  // not a number: the largest amount
        const float detailLow = static_cast<float>(low - level) * amount;
        return static_cast<float>(pan - low) * noiseGain[std::clamp(low, 0, white)] + detailLow;
    }
};

SharpnessTables SharpnessTablesOf(float sharpenParam, float highLumaNoise, float lowLumaNoise) noexcept;

}  // namespace kvx
