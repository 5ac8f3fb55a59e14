/** Samples of a row that differ from all their neighbours by more than noise does. */
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace kvx::frame {

/**
 * A row, and the rows `distance` above and below. The neighbours of a sample are those at this distance in the eight
 * directions; the opposite one stands for a neighbour outside the frame.
 */
struct OutlierRows {
    const uint16_t* above;
    const uint16_t* row;
    const uint16_t* below;
    size_t width;
    uint32_t distance;  ///< 2 or 4
};

/** Squares of the allowed differences: slope x signal x gain + intercept x gain^2, with a gain for each column. */
struct OutlierLimits {
    std::array<float, 4> slopes;      ///< not negative; columns use them in turn
    std::array<float, 4> intercepts;  ///< likewise
    const int16_t* gains;             ///< fixed-point gains of shading; null: 1
};

/** The rule for a sample next to the signal of its nearest neighbour. */
inline bool IsBeyond(const OutlierLimits& limits, uint32_t difference, uint32_t signal, size_t column) {
    const float gain = limits.gains ? static_cast<float>(limits.gains[column]) * (1.0F / 4096) : 1.0F;
    const float limit =
        (limits.slopes[column % 4] * static_cast<float>(signal) + limits.intercepts[column % 4] * gain) * gain;
    return static_cast<float>(difference) * static_cast<float>(difference) > limit;
}

/** Sets the bits of outliers, lowest bit first, in the columns that `columns` has bits for; keeps the other bits. */
void FindOutliers(const OutlierRows& rows, const OutlierLimits& limits, uint64_t columns, uint64_t* bits);

}  // namespace kvx::frame
