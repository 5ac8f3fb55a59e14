/** Pan at the colour sites of a row, and the colour difference there. */
#pragma once

#include "demosaicers/interpolation/HalfRows.h"

namespace kvx {

/**
 * The mean of the pair of pan neighbours that differs less; the mean of all four on the border.
 *
 * @param pan around the colour sites
 * @param isBorder the row is the first or last one of the working area
 * @param borderSite the site in the first or last column, also a border site
 * @param[in,out] row `difference` holds the raw colour samples, and then pan - colour
 */
void CompletePanAtColourSites(const Neighbours<int16_t>& pan, bool isBorder, size_t borderSite, size_t sites,
                              const HalfRows<int16_t>& row);
void CompletePanAtColourSites(const Neighbours<int32_t>& pan, bool isBorder, size_t borderSite, size_t sites,
                              const HalfRows<int32_t>& row);

}  // namespace kvx
