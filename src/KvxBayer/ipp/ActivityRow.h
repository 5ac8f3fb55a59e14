/** Step 2: the activity of the colour differences along each axis, at the colour sites. */
#pragma once

#include "KvxBayer/ipp/Lanes.h"

namespace kvx::ipp {

/** Three measures of one axis, at the colour sites of a row. */
struct Activity {
    float* gradient;  ///< |d(+1) - d(-1)|
    float* change;    ///< square of the smoothed differences' change over four sites
    float* noise;     ///< square of the part that smoothing removes, times kNoiseShare
};

/** @param differences along the row; @param smooth working memory: a row */
void HorizontalActivityRow(const PairRow& differences, int phase, int lanes, float* smooth, const Activity& activity);

/** The differences smoothed by (1 2 2 2 1) / 8 down the columns. @param differences rows y - 2 to y + 2 */
void SmoothRow(const PairRow differences[5], int phase, int lanes, float* smooth);

/**
 * @param differences down the columns, rows y - 1, y, y + 1
 * @param smooth rows y - 2, y, y + 2 of SmoothRow()
 */
void VerticalActivityRow(const PairRow differences[3], const float* const smooth[3], int phase, int lanes,
                         const Activity& activity);

}  // namespace kvx::ipp
