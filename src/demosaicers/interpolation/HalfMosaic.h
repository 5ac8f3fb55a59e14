/** The kernels of the Bayer-like TrueSense demosaicer: to half size, and back. */
#pragma once

#include "demosaicers/interpolation/HalfRows.h"

namespace kvx {

/** Differences are kept as words: moved up by this, so that none is negative. */
constexpr int kDifferenceZero = 0x8000;

/**
 * Reduces an even row and the row below to one row of the half mosaic. A 2x2 block holds two pan sites and two sites
 * of one colour: its pan sites take the mean of the two differences, and the block the mean of colour - pan over its
 * four sites.
 *
 * @param pan0, pan1 dense pan of both rows; these and `half` have room for a vector more
 * @param half `sites` words
 */
void ReduceRowPair(const HalfRows<int16_t>& even, const HalfRows<int16_t>& odd, size_t sites, int16_t* pan0,
                   int16_t* pan1, uint16_t* half);
void ReduceRowPair(const HalfRows<int32_t>& even, const HalfRows<int32_t>& odd, size_t sites, int16_t* pan0,
                   int16_t* pan1, uint16_t* half);

/**
 * Scales differences up to a row of the working area, bilinearly, and adds pan. With near and far rows of half size, a
 * site gets (9 a + 3 b + 3 c + d) / 16, rounded half to even: a and b from the near row, a and c in the nearer column.
 *
 * @param near, far `sites` words each
 * @param pan,plane two elements for each site; all rows and `sums` have room for a vector more on either side
 * @param sums working memory
 */
void AddScaledUp(const uint16_t* near, const uint16_t* far, const int16_t* pan, size_t sites, int32_t* sums,
                 int16_t* plane);

}  // namespace kvx
