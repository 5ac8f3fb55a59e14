/** All three colour differences at the colour sites, from the one that each site measures. */
#pragma once

#include "demosaicers/interpolation/HalfRows.h"

namespace kvx {

/**
 * The colour that a row does not measure, at its red or blue sites: mean of the four differences at the diagonals, two
 * rows and two columns away. Fills `row.diagonal`; needs the differences of the rows two up and two down.
 */
void CompleteDiagonals(const HalfRows<int16_t>& up, const HalfRows<int16_t>& down, size_t sites,
                       const HalfRows<int16_t>& row);
void CompleteDiagonals(const HalfRows<int32_t>& up, const HalfRows<int32_t>& down, size_t sites,
                       const HalfRows<int32_t>& row);

/**
 * The rest, each a mean of four two sites away: green at the red and blue sites, red and blue at the green sites.
 * Fills `row.red`, `row.green` and `row.blue`; needs the diagonals of the rows two up and two down as well.
 *
 * @param measuresRed the row measures red at odd sites and green at even ones; otherwise blue at even and green at odd
 */
void CompleteDifferences(const HalfRows<int16_t>& up, const HalfRows<int16_t>& down, size_t sites, bool measuresRed,
                         const HalfRows<int16_t>& row);
void CompleteDifferences(const HalfRows<int32_t>& up, const HalfRows<int32_t>& down, size_t sites, bool measuresRed,
                         const HalfRows<int32_t>& row);

}  // namespace kvx
