/** The 4x4 tile that all TrueSense mosaics repeat. */
#pragma once

namespace kvx {

//  W B W G    Pan sites (W) are those with (row + column) even. The colour sites of the even rows form a mosaic of
//  B W G W    B G / G R, those of the odd rows form the same mosaic again: rows 0 and 1 of the tile read B G B G...,
//  W G W R    rows 2 and 3 read G R G R...
//  G W R W
constexpr int kTileSize = 4;
constexpr char s_baseTile[kTileSize][kTileSize + 1] = {"WBWG", "BWGW", "WGWR", "GWRW"};

/** The kind of a site of the working area, whose origin is the tile's. */
constexpr char KindAt(int row, int column) {
    return s_baseTile[row % kTileSize][column % kTileSize];
}

}  // namespace kvx
