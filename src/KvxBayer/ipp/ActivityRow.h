/** Step 2: how restless the colour differences are along each axis, summed over windows of 5x5 sites. */
#pragma once

#include "KvxBayer/ipp/Lanes.h"

namespace kvx::ipp {

/** Three measures of one axis, of which a row holds the sums over five columns. */
struct Activity {
    PairRow gradient;  ///< |d(+1) - d(-1)|
    PairRow change;    ///< square of what a smoothed line changes over four sites
    PairRow noise;     ///< square of what smoothing takes away, times kNoiseShare
};

/** `smooth` = binomial-like mean (1 2 2 2 1) / 8 down the columns. @param vertical differences, rows y - 2 to y + 2 */
void SmoothRow(const PairRow vertical[5], int lanes, const PairRow& smooth);

/** Working memory of the two functions below: one row of each measure, and one more. */
struct ActivityScratch {
    Activity measures;
    PairRow smooth;
};

/** The row's sums over five columns, from its differences along the row. */
void HorizontalActivityRow(const PairRow& horizontal, int lanes, const ActivityScratch& scratch, const Activity& sums);

/**
 * The same from the differences down the columns.
 * @param differences rows y - 1, y, y + 1
 * @param smooth rows y - 2, y, y + 2 of SmoothRow()
 */
void VerticalActivityRow(const PairRow differences[3], const PairRow smooth[3], int lanes,
                         const ActivityScratch& scratch, const Activity& sums);

}  // namespace kvx::ipp
