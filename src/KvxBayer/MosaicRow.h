/** One row of a Bayer mosaic becomes pixels. */
#pragma once

#include <cstddef>
#include <cstdint>

#include "KvxBayer/BayerOutput.h"

namespace kvx {

/**
 * How green is found at a red or blue site; all other samples are means of the nearest two or four sites of their
 * colour. A mean of two is (a + b + 1) / 2, of four (a + b + c + d + 2) / 4.
 */
enum class GreenRule {
    Mean,      // of all four neighbours
    EdgeAware  // of the two along the weaker gradient; a tie goes to the left and right one
};

/** A row of the mosaic with the rows around it, and how its pixels are computed and stored. */
struct MosaicRow {
    const uint8_t *above, *centre, *below;  // first sample of each; words may lie at odd addresses
    size_t sampleSize;                      // 1 or 2 bytes
    size_t width;                           // 3 or more
    bool greenFirst;                        // the first site is green, else red or blue
    bool rowColourFirst;  // of a pixel's samples the row's own red or blue is the first, else the third
    GreenRule rule;
    BayerOutput output;
};

/** Converts the row's `width` pixels to `out`; the first and the last take the values of their neighbours. */
void ConvertMosaicRow(const MosaicRow& row, uint8_t* out);

}  // namespace kvx
