/** The filters of "swift" as the rows' loops read them. */
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "KvxFrame/View.h"
#include "frame/learned/swift/SwiftFilters.h"

namespace kvx::frame {

/** Words that a loop repeats along the row: those of two 32-bit lanes, which are neighbouring sites of a kind. */
using LaneWords = std::array<int16_t, 4>;

/** Pairs of taps of a filter, at most. */
inline constexpr size_t kMostPairs = 23;

/** For each pair of taps: the filters along rows, then those along columns, each of so many colours. */
template <size_t kColours>
using PackedPairs = std::array<LaneWords, 2 * kColours * kMostPairs>;

/**
 * Every row of a mosaic has green sites and those of its own other colour, red or blue. Three colours are computed: the
 * row's own, green, and the other. A colour site lacks the other one and either green or its own: "swapped".
 */
struct PackedRow {
    bool ownIsRed;          ///< otherwise it is blue
    LaneWords own, green;   ///< -1 at columns whose sample is of this colour, 0 at others
    size_t firstPan;        ///< column of the first pan site; TrueSense only
    PackedPairs<2> colour;  ///< filters of swapped and other
    PackedPairs<3> pan;     ///< filters of own, green and other; TrueSense only
};

/** Two taps, (row, column) from the pixel, and which filters have them. */
struct TapPair {
    int8_t rows[2], columns[2];
    bool isAlongRows = true, isAlongColumns = true;
};

/** Bayer: samples with equal weights are added first, so a tap stands for up to four of them. */
inline constexpr std::array<TapPair, 6> kBayerTaps = {{{{0, 1}, {0, 0}},
                                                       {{0, 1}, {1, 1}},
                                                       {{0, 1}, {2, 2}, true, false},
                                                       {{0, 1}, {3, 3}, true, false},
                                                       {{2, 3}, {0, 0}, false, true},
                                                       {{2, 3}, {1, 1}, false, true}}};

/** TrueSense: pairs that are neighbours in memory, then those of two rows, the second to the right of the first. */
inline constexpr size_t kNeighbours = 20;
inline constexpr std::array<TapPair, kMostPairs> kTrueSenseTaps = {
    {{{-3, -3}, {-2, -1}}, {{-3, -3}, {0, 1}},  {{-2, -2}, {-3, -2}}, {{-2, -2}, {-1, 0}}, {{-2, -2}, {1, 2}},
     {{-1, -1}, {-3, -2}}, {{-1, -1}, {-1, 0}}, {{-1, -1}, {1, 2}},   {{0, 0}, {-3, -2}},  {{0, 0}, {-1, 0}},
     {{0, 0}, {1, 2}},     {{1, 1}, {-3, -2}},  {{1, 1}, {-1, 0}},    {{1, 1}, {1, 2}},    {{2, 2}, {-3, -2}},
     {{2, 2}, {-1, 0}},    {{2, 2}, {1, 2}},    {{3, 3}, {-2, -1}},   {{3, 3}, {0, 1}},    {{3, 3}, {2, 3}},
     {{-3, -2}, {2, 3}},   {{-1, 0}, {3, 3}},   {{1, 2}, {3, 3}}}};

/** The filters for each row of the tile, of a mosaic as it lies in memory: mirrored or not. */
std::array<PackedRow, 4> PackFilters(const SwiftFilters& filters, const SourceView& mosaic);

}  // namespace kvx::frame
