/** One row of bilinear conversion: the rule for one site, and the vector form that dispatches on the processor. */
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "KvxBayer/BayerConversion.h"

namespace kvx {

/** A row of the mosaic with the rows around it, and how its pixels are stored. */
struct BilinearRow {
    const uint16_t *above, *centre, *below;
    size_t width;         // 3 or more
    bool greenFirst;      // the first site is green, else red or blue
    bool rowColourFirst;  // of a pixel's three samples the row's own red or blue is the first, else the last
    BayerOutput output;
};

/** A pixel by what its samples are to the row: the red or blue that the row has, green, and the one that it lacks. */
struct BilinearPixel {
    uint16_t rowColour, green, otherColour;
};

/** (a + b + 1) / 2 and (a + b + c + d + 2) / 4, as the image-processing library rounds. */
constexpr uint16_t Mean(unsigned a, unsigned b) {
    return static_cast<uint16_t>((a + b + 1) >> 1);
}
constexpr uint16_t Mean(unsigned a, unsigned b, unsigned c, unsigned d) {
    return static_cast<uint16_t>((a + b + c + d + 2) >> 2);
}

/** The rule: `column` is at least 1 and has a right neighbour. */
inline BilinearPixel BilinearSite(const BilinearRow& row, size_t column) {
    const uint16_t* above = row.above + column;
    const uint16_t* centre = row.centre + column;
    const uint16_t* below = row.below + column;
    if ((column % 2 == 0) == row.greenFirst) return {Mean(centre[-1], centre[1]), centre[0], Mean(above[0], below[0])};
    return {centre[0], Mean(above[0], below[0], centre[-1], centre[1]), Mean(above[-1], above[1], below[-1], below[1])};
}

/** 2^-shift of a sample, rounded to nearest even and saturated to a byte. */
inline uint8_t RoundedByte(unsigned sample, int shift) {
    const unsigned tieToEven = (1u << (shift - 1)) - 1 + ((sample >> shift) & 1);
    return static_cast<uint8_t>(std::min((sample + tieToEven) >> shift, 255u));
}

/** Converts the row's `width` pixels to `out`; the first and the last take the values of their neighbours. */
void ConvertBilinearRow(const BilinearRow& row, void* out);

}  // namespace kvx
