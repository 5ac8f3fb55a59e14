/**
 * Step 3: the cost of each axis at a colour site, and the distance over which its differences stay constant.
 *
 * The measures are summed over the colour sites of a window of 5x5:
 *     C . C . C
 *     . C . C .
 *     C . C . C
 *     . C . C .
 *     C . C . C
 */
#pragma once

#include "KvxBayer/ipp/ActivityRow.h"

namespace kvx::ipp {

/** One axis, at the colour sites of a row. */
struct Direction {
    float* cost;   ///< square of the window's sum of gradients: a weight is its inverse
    float* local;  ///< 0..1: 1 where the differences change along the axis, so that only near sites count
};

/**
 * @param activity rows y - 2 to y + 2 of the axis; @param phase of row y
 * @param even, between working memory: for each measure a row of sums of its three (two) rows of like phase
 */
void DirectionRow(const Activity activity[5], int phase, int lanes, const Activity& even, const Activity& between,
                  const Direction& direction);

}  // namespace kvx::ipp
