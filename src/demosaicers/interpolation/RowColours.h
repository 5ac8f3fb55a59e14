/** The finished colours of one row, from pan and the differences at the colour sites. */
#pragma once

#include "demosaicers/interpolation/HalfRows.h"

namespace kvx {

/**
 * At the pan sites: pan minus the mean of the pair of adjacent differences along which pan changes less; on the border
 * the mean of the four adjacent colours. At the colour sites: pan minus the difference.
 *
 * @param panIsOdd the pan sites lie in the odd columns
 * @param isBorder the row is the first or last one of the working area
 * @param planes red, green and blue in the order of the columns, with room for a vector more
 */
void CompleteColours(const HalfRows<int16_t>& up, const HalfRows<int16_t>& row, const HalfRows<int16_t>& down,
                     bool panIsOdd, bool isBorder, size_t sites, int16_t* const planes[3]);
void CompleteColours(const HalfRows<int32_t>& up, const HalfRows<int32_t>& row, const HalfRows<int32_t>& down,
                     bool panIsOdd, bool isBorder, size_t sites, int16_t* const planes[3]);

}  // namespace kvx
