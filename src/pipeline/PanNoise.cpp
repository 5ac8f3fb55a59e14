#include "pipeline/PanNoise.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "KvxDemosaicing/KvxPipeline.h"

namespace kvx {
namespace {

constexpr int32_t kFewBlocks = 12;         // too few to measure a level
constexpr int32_t kSmoothShare = 8;        // one block of so many counts as smooth
constexpr float kCodesOfRoughness = 0.3F;  // deviation of a block at that quantile, by its mean magnitude of residuals
constexpr float kThresholdDeviations = 4.1F;
constexpr float kLeastThreshold = 0.5F;
constexpr float kPlainSignal = 0.5F;  // of the sum of squared correlations; noise alone gives about 0.15

constexpr float LinearAt(int32_t code) {
    return static_cast<float>(Gamma10toLinear12[code]) + 1.0F;
}

/** The largest deviation at `linear` that one at `known` leaves possible: variances rise, at most in proportion. */
float Possible(float deviation, float known, float linear) {
    return linear > known ? deviation * std::sqrt(linear / known) : deviation;
}

/**
 * Whether the residuals of a block are correlated: texture repeats or continues, noise does neither. As in a test for
 * whiteness (Box and Pierce, "Distribution of residual autocorrelations", 1970); a correlation follows from the mean
 * magnitude of differences, which noise alone makes sqrt(2) times that of the residuals. Residuals one cell apart have
 * two neighbours in common, which gives a correlation of 2 / 20.
 */
bool IsSignal(const NoiseBlock& block) {
    if (block.roughness == 0) return false;
    const float magnitude = static_cast<float>(block.roughness) / kNoiseSamples;
    float sum = 0;
    for (int32_t lag = 1; lag <= kNoiseLags; ++lag)
        for (const auto& differences : {block.across, block.down}) {
            const auto pairs = static_cast<float>((kNoiseBlock - lag) * kNoiseBlock);
            const float ratio = static_cast<float>(differences[lag - 1]) / pairs / magnitude;
            const float correlation = 1.0F - 0.5F * ratio * ratio - (lag == 1 ? 0.1F : 0.0F);
            sum += correlation * correlation;
        }
    return sum > kPlainSignal;
}

}  // namespace

PanThresholds NoPanThresholds() noexcept {
    PanThresholds thresholds;
    thresholds.fill(kLeastThreshold);
    return thresholds;
}

bool ReducesNoise(const ImageProcessParam& param) noexcept {
    const auto isPass = [](int32_t radius) { return radius > 0; };
    return std::any_of(param.panRadius, param.panRadius + 3, isPass) ||
           std::any_of(param.colorRadius, param.colorRadius + 3, isPass);
}

void PanNoise::Count(const NoiseBlock& block) noexcept {
    const int32_t level = block.level / kNoiseSamples / kCodesOfLevel;
    const int32_t step = std::min(block.roughness / kNoiseSamples, kSteps - 1);
    ++m_blocks[level][step];
    if (IsSignal(block)) ++m_signals[level][step];
}

void PanNoise::Add(const PanNoise& other) noexcept {
    for (int32_t level = 0; level < kLevels; ++level)
        for (int32_t step = 0; step < kSteps; ++step) {
            m_blocks[level][step] += other.m_blocks[level][step];
            m_signals[level][step] += other.m_signals[level][step];
        }
}

PanNoise::LevelNoise PanNoise::Measured(int32_t level) const noexcept {
    const auto& steps = m_blocks[level];
    const int32_t blocks = std::accumulate(steps.begin(), steps.end(), 0);
    if (blocks < kFewBlocks) return {};
    int32_t passed = 0, step = 0;
    while (passed + steps[step] <= blocks / kSmoothShare) passed += steps[step++];
    const int32_t smooth = passed + steps[step];
    const auto* signals = m_signals[level].begin();
    const int32_t smoothSignals = std::accumulate(signals, signals + step + 1, 0);
    const float slope = GammaSlope(LinearAt(level * kCodesOfLevel + kCodesOfLevel / 2));
    return {static_cast<float>(step) * kCodesOfRoughness / slope, 2 * smoothSignals > smooth};
}

PanThresholds PanNoise::Thresholds() const noexcept {
    std::array<LevelNoise, kLevels> levels;
    for (int32_t level = 0; level < kLevels; ++level) levels[level] = Measured(level);
    PanThresholds thresholds = NoPanThresholds();
    for (int32_t code = 0; code < kGammaCodes; ++code) {
        const float linear = LinearAt(code);
        LevelNoise least;
        for (int32_t level = 0; level < kLevels; ++level) {
            const auto [deviation, isSignal] = levels[level];
            if (deviation < 0) continue;
            const float possible = Possible(deviation, LinearAt(level * kCodesOfLevel + kCodesOfLevel / 2), linear);
            if (least.deviation < 0 || possible < least.deviation) least = {possible, isSignal};
        }
        if (least.isSignal) continue;
        thresholds[code] = std::max(kThresholdDeviations * least.deviation * GammaSlope(linear), kLeastThreshold);
    }
    return thresholds;
}

}  // namespace kvx
