/** Step 4: green at the colour sites, from half lines of colour differences in four directions. */
#pragma once

#include "KvxBayer/ipp/DirectionRow.h"

namespace kvx::ipp {

struct GreenInput {
    const float* mosaic;       ///< samples of the colour sites
    PairRow horizontal;        ///< differences along the row
    const float* vertical[9];  ///< differences down the columns, at the colour sites' columns, rows y - 4 to y + 4
    Direction alongRow;        ///< row y
    Direction above, below;    ///< down the columns, rows y - 2 and y + 2
    int phase;                 ///< of row y
    float maximum;             ///< of a sample
};

/** At the colour sites: `green` 0..maximum, and `difference` = sample - green. */
void GreenRow(const GreenInput& input, int lanes, float* green, float* difference);

}  // namespace kvx::ipp
