/** The 4x4 tile that all TrueSense mosaics repeat: this table, and what follows from it. */
#pragma once

namespace kvx {

constexpr int kTileSize = 4;
constexpr char s_baseTile[kTileSize][kTileSize + 1] = {"WBWG", "BWGW", "WGWR", "GWRW"};

/** The kind of a site of the working area, whose origin is the tile's: W (clear, pan), R, G or B. */
constexpr char KindAt(int row, int column) {
    return s_baseTile[row % kTileSize][column % kTileSize];
}

/** Every other site is a pan site: the odd ones of these rows, the even ones of the others. */
constexpr bool PanIsOdd(int row) {
    return KindAt(row, 0) != 'W';
}

/** The colour of a cell of 2x2 sites: two pan sites and two of this colour. The cells form a Bayer mosaic. */
constexpr char ColourOfCell(int cellRow, int cell) {
    return KindAt(2 * cellRow, 2 * cell + 1);
}

/** Rows whose colour sites are red and green; those of the other rows are blue and green. */
constexpr bool HasRed(int row) {
    return ColourOfCell(row / 2, 0) == 'R' || ColourOfCell(row / 2, 1) == 'R';
}

/** What the vector code takes for granted: the two diagonals of a cell, and green next to another colour. */
constexpr bool IsTileRegular() {
    for (int row = 0; row < kTileSize; ++row)
        for (int column = 0; column < kTileSize; ++column) {
            const bool isPan = PanIsOdd(row) == (column % 2 != 0);
            const char expected = isPan ? 'W' : ColourOfCell(row / 2, column / 2);
            if (KindAt(row, column) != expected || PanIsOdd(row) != (row % 2 != 0)) return false;
            const char other = HasRed(row) ? 'R' : 'B';
            const bool isGreen = (row / 2 + column / 2) % 2 != 0;
            if (!isPan && expected != (isGreen ? 'G' : other)) return false;
        }
    return true;
}
static_assert(IsTileRegular());

}  // namespace kvx
