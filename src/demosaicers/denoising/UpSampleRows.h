/** Up-sampling of rows of half-resolution planes. */
#pragma once

#include <cstddef>
#include <cstdint>

namespace kvx {

/**
 * Adds up the cells of one colour, weights 1 2 1.
 *
 * @param difference a row of the mosaic of differences; a vector more on either side may be read
 * @param firstCell 0 or 1, the first cell of the colour, which every other one has
 */
void SpreadAcross(const int32_t* difference, int firstCell, size_t cells, int32_t* sums) noexcept;

/**
 * Adds up three rows of such sums, weights 1 2 1, and divides by 4 for red and blue, by 8 for green.
 *
 * @param up,down null for the first and the last row, which stay as they are
 */
void SpreadDown(const int32_t* up, const int32_t* row, const int32_t* down, bool isGreen, size_t cells,
                int32_t* spread) noexcept;

/** Doubles a row and smooths it, weights 1/4 1/2 1/4. A vector more on either side may be read. */
void CalculateConvolveSimple1D(const int32_t* row, size_t cells, float* doubled) noexcept;

/** A full-resolution row: doubled rows with weights 1/4 1/2 1/4. */
struct DoubledRows {
    const float *before, *here, *after;  ///< only `here` counts at the border
    bool isBorder;
};

}  // namespace kvx
