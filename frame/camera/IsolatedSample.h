/** Tells defects from details of the scene. */
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace kvx::frame {

/** A mosaic of words without padding. */
struct WordMosaic {
    const uint16_t* samples;
    int64_t width, height;

    bool Has(int64_t row, int64_t column) const {
        return row >= 0 && row < height && column >= 0 && column < width;
    }
    int At(int64_t row, int64_t column) const {
        return samples[row * width + column];
    }
};

/**
 * Whether an outlier stands alone: it exceeds its neighbours of the same filter by more than these differ among
 * themselves, and no more than two of the four samples around it show the same step, as a detail of the scene would,
 * compared with samples of their own filter two sites farther out.
 *
 * @param distance   of the neighbours of the same filter
 * @param isDiagonal whether the four samples around are the diagonal ones
 */
inline bool IsIsolated(const WordMosaic& mosaic, int64_t row, int64_t column, int64_t distance, bool isDiagonal) {
    constexpr int kLikeDetail = 4;  // a quarter of the step
    const int sample = mosaic.At(row, column);
    int high = 0, low = 65535;
    for (int64_t rows = -distance; rows <= distance; rows += distance)
        for (int64_t columns = -distance; columns <= distance; columns += distance)
            if ((rows != 0 || columns != 0) && mosaic.Has(row + rows, column + columns)) {
                high = std::max(high, mosaic.At(row + rows, column + columns));
                low = std::min(low, mosaic.At(row + rows, column + columns));
            }
    const int sign = sample > high ? 1 : -1, step = sign > 0 ? sample - high : low - sample;
    if (step <= high - low) return false;
    constexpr int64_t kStraight[4][2] = {{0, -1}, {0, 1}, {-1, 0}, {1, 0}},
                      kDiagonal[4][2] = {{-1, -1}, {-1, 1}, {1, -1}, {1, 1}};
    int alike = 0;
    for (const auto& [rows, columns] : isDiagonal ? kDiagonal : kStraight)
        if (mosaic.Has(row + 3 * rows, column + 3 * columns) &&
            sign * (mosaic.At(row + rows, column + columns) - mosaic.At(row + 3 * rows, column + 3 * columns)) *
                    kLikeDetail >
                step)
            ++alike;
    return alike < 3;
}

}  // namespace kvx::frame
