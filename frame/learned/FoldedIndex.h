/** The border of a frame, as the learned interpolators see it. */
#pragma once

#include <cstdint>

namespace kvx::frame {

/**
 * The sample that stands for the one at `index` of an axis with `size` samples: itself inside; outside, the nearest one
 * that is a multiple of the tile's side away, or of half of it and so on where the frame is too small for that.
 *
 * @param side of the tile, a power of two
 */
inline int64_t FoldedIndex(int64_t index, int64_t size, int64_t side) {
    if (index >= 0 && index < size) return index;
    for (int64_t period = side; period > 1; period /= 2) {
        const int64_t moved = index < 0 ? index + (-index + period - 1) / period * period
                                        : index - (index - size + period) / period * period;
        if (moved >= 0 && moved < size) return moved;
    }
    return index < 0 ? 0 : size - 1;
}

}  // namespace kvx::frame
