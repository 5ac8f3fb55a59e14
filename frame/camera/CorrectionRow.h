/** Fixed pattern, shading, black level and gains of one row of a mosaic. */
#pragma once

#include "frame/camera/ProfileLimits.h"
#include "frame/finish/BalanceRow.h"

namespace kvx::frame {

/** What a camera adds to a row; a pointer to its first column each. */
struct RowCorrection {
    const int16_t* pattern;     ///< what the sensor adds to each sample, in 16-bit values; null: nothing
    const int16_t* upperGains;  ///< fixed-point gains of shading in the nodes above the row; null: no shading
    const int16_t* lowerGains;  ///< below the row
    int16_t lowerWeight;        ///< share of the nodes below: 0 to 32767 of 32768

    /** The correction of the row from a column on. */
    RowCorrection From(uint32_t column) const {
        const auto from = [column](const int16_t* columns) { return columns ? columns + column : nullptr; };
        return {from(pattern), from(upperGains), from(lowerGains), lowerWeight};
    }
};

/** The rule for light without shading: a gain between two nodes; rounded down, so that a gain of 1 changes nothing. */
inline uint32_t UnshadedLight(const RowCorrection& correction, uint32_t light, size_t column) {
    const int upper = correction.upperGains[column], lower = correction.lowerGains[column];
    const int gain = upper + (((lower - upper) * correction.lowerWeight + (1 << 14)) >> 15);
    return light * static_cast<uint32_t>(gain) >> kShadingPlaces;
}

/** The rule for one sample. */
inline uint16_t CorrectedSample(const RowCorrection& correction, const RowBalance& balance, uint16_t sample,
                                size_t column) {
    const uint32_t white = balance.white[column % 4], black = balance.black[column % 4];
    int value = std::min(sample, balance.largest) << balance.leftShift;
    const bool isClipped = static_cast<uint32_t>(value) >= white;  // and white stays white
    if (correction.pattern && !isClipped) value = std::clamp(value - correction.pattern[column], 0, 65535);
    uint32_t light = static_cast<uint32_t>(value) > black ? value - black : 0;
    if (correction.upperGains) light = UnshadedLight(correction, light, column);
    return BalancedLight(balance, std::min(light, white - black), column);
}

/** Applies it to `count` samples, in place. */
void CorrectRow(const RowCorrection& correction, const RowBalance& balance, uint16_t* samples, size_t count);

}  // namespace kvx::frame
