/** Step 1: colour differences green - colour along rows and along columns, at every site. */
#pragma once

#include "KvxBayer/ipp/Lanes.h"

namespace kvx::ipp {

/**
 * A site's other colour is estimated from its two neighbours in the line, bent as the site's own colour bends.
 * @param mosaic rows y - 2 to y + 2
 * @param phase of row y
 */
void DifferenceRow(const PairRow mosaic[5], int phase, int lanes, const PairRow& horizontal, const PairRow& vertical);

}  // namespace kvx::ipp
