#include "pipeline/PanNoise.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace kvx {
namespace {

constexpr int32_t kFewBlocks = 12;         // too few to tell
constexpr int32_t kSmoothShare = 8;        // one block of so many counts as smooth
constexpr float kCodesOfRoughness = 0.3F;  // deviation of a block at that quantile, by its mean magnitude of residuals
constexpr float kThresholdDeviations = 4.1F;
constexpr float kLeastThreshold = 0.5F;

constexpr float LinearAt(int32_t code) {
    return static_cast<float>(Gamma10toLinear12[code]) + 1.0F;
}

/** The largest deviation at `linear` that one at `known` leaves possible: variances rise, at most in proportion. */
float Possible(float deviation, float known, float linear) {
    return linear > known ? deviation * std::sqrt(linear / known) : deviation;
}

}  // namespace

void PanNoise::Add(const PanNoise& other) noexcept {
    for (int32_t level = 0; level < kLevels; ++level)
        for (int32_t step = 0; step < kSteps; ++step) m_blocks[level][step] += other.m_blocks[level][step];
}

PanNoise::LevelNoise PanNoise::Measured() const noexcept {
    LevelNoise noise;
    noise.fill(-1);
    for (int32_t level = 0; level < kLevels; ++level) {
        const auto& steps = m_blocks[level];
        const int32_t blocks = std::accumulate(steps.begin(), steps.end(), 0);
        if (blocks < kFewBlocks) continue;
        int32_t passed = 0, step = 0;
        while (passed + steps[step] <= blocks / kSmoothShare) passed += steps[step++];
        const float slope = GammaSlope(LinearAt(level * kCodesOfLevel + kCodesOfLevel / 2));
        noise[level] = static_cast<float>(step) * kCodesOfRoughness / slope;
    }
    return noise;
}

PanThresholds PanNoise::Thresholds() const noexcept {
    const LevelNoise noise = Measured();
    PanThresholds thresholds{};
    for (int32_t code = 0; code < kGammaCodes; ++code) {
        const float linear = LinearAt(code);
        float deviation = -1;
        for (int32_t level = 0; level < kLevels; ++level) {
            if (noise[level] < 0) continue;
            const float possible = Possible(noise[level], LinearAt(level * kCodesOfLevel + kCodesOfLevel / 2), linear);
            deviation = deviation < 0 ? possible : std::min(deviation, possible);
        }
        thresholds[code] = std::max(kThresholdDeviations * deviation * GammaSlope(linear), kLeastThreshold);
    }
    return thresholds;
}

}  // namespace kvx
