/** Makes rows of the half-resolution planes, and filters noise from them. */
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "pipeline/NoiseThresholds.h"

namespace kvx {

/** Pan codes of two rows, at their pan sites and at their colour sites, by cells. */
struct CellPan {
    const int16_t *upper, *upperAtColour, *lower, *lowerAtColour;
};

/**
 * One row of cells.
 *
 * @param colour codes of the mean colour samples
 * @param lowPan 16.16
 * @param difference colour - pan in codes
 */
void GenerateLowRow(const CellPan& pan, const int16_t* colour, size_t cells, int32_t* lowPan,
                    int16_t* difference) noexcept;

/**
 * Clamps differences to the range of their neighbours two cells away.
 *
 * @param rows two rows up, the row, two rows down; null where there is none
 * @param filtered in codes; none of `rows`
 */
void FilterImpulses(const std::array<const int16_t*, 3>& rows, size_t cells, int16_t* filtered) noexcept;

/** Colour codes from pan and difference; and the difference as 16.16. */
void GenerateLowColour(const int32_t* lowPan, const int16_t* difference, size_t cells, int16_t* lowColour,
                       int32_t* lowColorDiff) noexcept;

/**
 * Codes of the local means around the values of a row.
 *
 * @param step to the neighbours' rows and columns, in values
 * @param rowStep to the neighbours' rows, in values; 0 for rows at the border, whose values stand for themselves
 */
void LocalCodes(const int32_t* row, ptrdiff_t rowStep, size_t step, size_t cells, int16_t* codes) noexcept;
void LocalCodes(const int16_t* row, ptrdiff_t rowStep, size_t step, size_t cells, int16_t* codes) noexcept;

/** Outside a plane: differs from every value of it by more than any threshold. */
constexpr int32_t kOutside = 1 << 29;

/** A pass of the sigma filter. */
struct SigmaPass {
    int radius;         ///< in steps
    size_t step;        ///< to the nearest neighbours, in rows and columns
    ptrdiff_t rowStep;  ///< from one row to the next, in values
};

/**
 * Filters a row. kOutside values surround the plane as far as the window reaches.
 *
 * @param isBorder the rows `step` above or below lie outside
 * @param thresholds one for each value; a vector more may be read
 */
void FilterSigma(const int32_t* row, const SigmaPass& pass, bool isBorder, const int32_t* thresholds, size_t cells,
                 int32_t* filtered) noexcept;

}  // namespace kvx
