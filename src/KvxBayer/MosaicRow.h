/** One row of a Bayer mosaic becomes pixels: the rule for one site, and the vector form of it. */
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "KvxBayer/BayerOutput.h"

namespace kvx {

/** How green is found at a red or blue site; all other samples are means of the nearest sites of their colour. */
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

/** A pixel by what its samples are to the row: the red or blue that the row has, green, and the one that it lacks. */
template <class T>
struct MosaicPixel {
    T rowColour, green, otherColour;
};

/** The rule for the site at `column`, which has a neighbour on both sides. */
template <class T>
MosaicPixel<T> PixelAt(const MosaicRow& row, size_t column) {
    const auto sample = [column](const uint8_t* samples, int offset) {
        T value;
        std::memcpy(&value, samples + (column + static_cast<size_t>(offset)) * sizeof(T), sizeof value);
        return int{value};
    };
    const int above = sample(row.above, 0), below = sample(row.below, 0);
    const int left = sample(row.centre, -1), centre = sample(row.centre, 0), right = sample(row.centre, 1);
    const int vertical = (above + below + 1) >> 1, horizontal = (left + right + 1) >> 1;
    if ((column % 2 == 0) == row.greenFirst)
        return {static_cast<T>(horizontal), static_cast<T>(centre), static_cast<T>(vertical)};

    const int corners = sample(row.above, -1) + sample(row.above, 1) + sample(row.below, -1) + sample(row.below, 1);
    const int green = row.rule == GreenRule::Mean                        ? (above + below + left + right + 2) >> 2
                      : std::abs(left - right) > std::abs(above - below) ? vertical
                                                                         : horizontal;
    return {static_cast<T>(centre), static_cast<T>(green), static_cast<T>((corners + 2) >> 2)};
}

/** A sample times 2^-shift, rounded to nearest even and saturated to a byte. */
inline uint8_t RoundedByte(unsigned sample, int shift) {
    const unsigned tieToEven = (1u << (shift - 1)) - 1 + ((sample >> shift) & 1);
    return static_cast<uint8_t>(std::min((sample + tieToEven) >> shift, 255u));
}

/** Converts the row's `width` pixels to `out`; the first and the last take the values of their neighbours. */
void ConvertMosaicRow(const MosaicRow& row, uint8_t* out);

}  // namespace kvx
