/** Step 3: what each axis costs at a colour site, and how far along it the differences can be trusted to be one. */
#pragma once

#include "KvxBayer/ipp/ActivityRow.h"

namespace kvx::ipp {

/** One axis, at the colour sites of a row. */
struct Direction {
    float* cost;   ///< square of the window's sum of gradients: a weight is its inverse
    float* local;  ///< 0..1: 1 where the differences change along the axis, so that only near sites tell
};

/** @param sums rows y - 2 to y + 2 of the axis' column sums; @param phase of row y */
void DirectionRow(const Activity sums[5], int phase, int lanes, const Direction& direction);

}  // namespace kvx::ipp
