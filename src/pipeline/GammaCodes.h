/** The pipeline's two scales of brightness: 12-bit linear values and 10-bit gamma codes. */
#pragma once

#include <array>
#include <cstdint>

namespace kvx {

constexpr int kLinearValues = 4096, kGammaCodes = 1024;

// Up to kGammaKnee a code is its linear value; above, kGammaKnee + kGammaScale ln((x + kGammaOffset) / (kGammaKnee +
// kGammaOffset)), which ends at (4095, 1023).
constexpr int kGammaKnee = 256;
constexpr double kGammaOffset = 1.5, kGammaScale = 277.2086918;

extern const std::array<int32_t, kGammaCodes> Gamma10toLinear12;
extern const std::array<int32_t, kLinearValues> Linear12toGamma10;
inline constexpr const auto& Gamma10toLinear12Table = Gamma10toLinear12;
inline constexpr const auto& Linear12toGamma10Table = Linear12toGamma10;

/** The code of the mean of two linear values, rounded. */
inline int32_t CodeOfMean(int32_t a, int32_t b) {
    return Linear12toGamma10[(a + b + 1) / 2];
}

/** Codes for each linear step at this linear value. */
constexpr float GammaSlope(float linear) {
    return linear <= kGammaKnee ? 1.0F : static_cast<float>(kGammaScale) / (linear + static_cast<float>(kGammaOffset));
}

constexpr int kFractionBits = 16;  // of planes of gamma codes in 32 bits
constexpr int32_t kCodeUnit = 1 << kFractionBits;

/** The gamma code of a 16.16 value, within 0 to 1023. */
constexpr int32_t CodeOf(int32_t value) {
    const int32_t code = value / kCodeUnit;
    return code < 0 ? 0 : code >= kGammaCodes ? kGammaCodes - 1 : code;
}

}  // namespace kvx
