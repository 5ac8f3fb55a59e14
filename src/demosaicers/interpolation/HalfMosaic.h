/** The kernels of the Bayer-like TrueSense demosaicer: to half size, and back. */
#pragma once

#include "demosaicers/interpolation/HalfRows.h"

namespace kvx {

/**
 * Reduces an even row and the row below to one row of the half mosaic. A 2x2 block holds two pan sites and two sites
 * of one colour: its pan sites take the mean of the two differences, and the block the mean of colour - pan over its
 * four sites.
 *
 * @param pan0, pan1 dense pan of both rows; these and `half` have room for a vector more
 * @param half `sites` elements
 */
void ReduceRowPair(const HalfRows<int16_t>& even, const HalfRows<int16_t>& odd, size_t sites, int16_t* pan0,
                   int16_t* pan1, int16_t* half);
void ReduceRowPair(const HalfRows<int32_t>& even, const HalfRows<int32_t>& odd, size_t sites, int16_t* pan0,
                   int16_t* pan1, int16_t* half);

/** Planes of pan + difference as 16-bit values; `differences` are red, green, blue by turns. */
void AddPan(const int16_t* pan, const int16_t* differences, size_t count, int16_t* const planes[3]);

}  // namespace kvx
