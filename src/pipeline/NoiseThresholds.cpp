#include "pipeline/NoiseThresholds.h"

#include <cmath>

namespace kvx {

ThresholdTable ThresholdsOf(float sigma, const NoiseModel& noise) noexcept {
    constexpr float largest = static_cast<float>(kGammaCodes) * kCodeUnit;
    ThresholdTable table{};
    for (int32_t code = 0; code < kGammaCodes; ++code) {
        const auto linear = static_cast<float>(Gamma10toLinear12[code]);
        const float variance = noise.slope * (linear / noise.gain) + noise.intercept;
        const float deviation = variance > 0 ? std::sqrt(variance) * noise.gain * noise.share : 0.0F;
        const float threshold = sigma * deviation * GammaSlope(linear) * static_cast<float>(kCodeUnit);
        if (threshold > 0) table[code] = static_cast<int32_t>(threshold < largest ? threshold : largest);
    }
    return table;
}

float LowColourGain(float globalGain, float redBalance, float greenBalance, float blueBalance) noexcept {
    const float squares = redBalance * redBalance + 2 * (greenBalance * greenBalance) + blueBalance * blueBalance;
    return AppliedGain(globalGain) * std::sqrt(squares * 0.25F);
}

}  // namespace kvx
