/**
 * The layout of rows in the interpolator's working memory.
 *
 * A row's even and odd columns are apart: "even[i]" is column 2i of a tile, "odd[i]" column 2i + 1. The colour sites of
 * a Bayer row are then one dense array and its green sites the other, and a vertical neighbour has the same index.
 *
 *     row phase 0   C G C G C G      even = colour sites, odd = green sites
 *     row phase 1   G C G C G C      even = green sites, odd = colour sites
 */
#pragma once

namespace kvx::ipp {

/** Lanes of the widest vectors: rows are computed in multiples of this. */
constexpr int kLaneBlock = 16;
/** Lanes before and after a row that may be read; their values have no effect. */
constexpr int kLanePadding = 16;

/** Even and odd columns of one row. */
struct PairRow {
    float* even;
    float* odd;

    float* Colour(int phase) const {
        return phase == 0 ? even : odd;
    }
    float* Green(int phase) const {
        return phase == 0 ? odd : even;
    }
};

}  // namespace kvx::ipp
