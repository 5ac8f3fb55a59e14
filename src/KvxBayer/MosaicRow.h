/** Converts one row of a Bayer mosaic into pixels. */
#pragma once

#include <cstddef>
#include <cstdint>

#include "KvxBayer/BayerOutput.h"

namespace kvx {

/**
 * The rule for green at red and blue sites. All other samples are means of the nearest two or four sites of their
 * colour. A mean of two is (a + b + 1) / 2, of four (a + b + c + d + 2) / 4.
 */
enum class GreenRule {
    Mean,      // mean of all four neighbours
    EdgeAware  // mean of the two along the weaker gradient; a tie takes the left and right one
};

/** A row of the mosaic, its neighbours, and how to compute and store its pixels. */
struct MosaicRow {
    const uint8_t *above, *centre, *below;  // first sample of each; words may lie at odd addresses
    size_t sampleSize;                      // 1 or 2 bytes
    size_t width;                           // 3 or more
    bool greenFirst;                        // the first site is green, else red or blue
    bool rowColourFirst;                    // the row's own red or blue is the first sample of a pixel, else the third
    GreenRule rule;
    BayerOutput output;
};

/** Writes the row's `width` pixels to `out`; the first and the last repeat their neighbours. */
void ConvertMosaicRow(const MosaicRow& row, uint8_t* out);

/**
 * The same for a row of words, into planes: of the row's own red or blue, of green, and of the other colour.
 * @param row whose output does not count. The samples and the planes have room for a vector more, 64 bytes at most.
 */
void ConvertMosaicPlanes(const MosaicRow& row, uint16_t* const planes[3]);

}  // namespace kvx
