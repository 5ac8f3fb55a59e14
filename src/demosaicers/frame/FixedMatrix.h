/** A colour matrix in fixed point, with which most results of the double computation are known for certain. */
#pragma once

#include "demosaicers/frame/TrueSenseFrame.h"

namespace kvx {

/**
 * Entries are scaled by 2^(fractionBits + 15), rounded, and split into a coarse and a fine part of 16 bits each:
 * entry = coarse x 2^15 + fine. For 16-bit values v, with all sums in 32 bits,
 *
 *     z = sum(coarse x v) + (sum(fine x v) >> 15)
 *
 * lies less than 1.5 (rounded entries, three values of at most 2^15) + 1 (the shift, always downwards) from the exact
 * sum times 2^fractionBits: above it by less than 1.51, below it by less than 2.51, the rounding errors of the double
 * computation included. So z >> fractionBits is its integer part, but where z comes within that of a multiple of
 * 2^fractionBits: there kMargin + z modulo 2^fractionBits is less than kDoubtful.
 */
struct FixedMatrix {
    static constexpr int kMargin = 2, kDoubtful = 4;

    struct Row {
        int16_t coarse[kChannels], fine[kChannels];
    };
    bool isUsable;  ///< the entries are small enough that sums fit and doubt is rare
    int fractionBits;
    Row rows[kChannels];
};

FixedMatrix FixedMatrixOf(const ColourMatrix& matrix);

}  // namespace kvx
