/** The mosaic to interpolate, continued beyond its borders. */
#pragma once

#include <cstddef>
#include <cstdint>

#include "framework/RowExchange.h"

namespace kvx::ipp {

/**
 * A frame of at least 2x2 samples. An odd size is completed to whole cells of the pattern: the row or column after the
 * last repeats the one two before it. Beyond that the frame is mirrored about the outermost row or column, which keeps
 * the order of the colours: row -1 is row 1.
 */
struct Source {
    const RowExchange* exchange;  // in place of `data`, if not null
    const uint8_t* data;
    size_t lineStep;  // bytes
    int width, height;
    int sampleBytes;
    bool greenFirst;  // the top-left site
    bool blueOnTop;   // the top row has blue sites, not red ones

    int Phase(int row) const {
        return greenFirst == (row % 2 == 0) ? 1 : 0;
    }
    /** Copies `count` samples of a row, all inside the frame. */
    void Copy(int row, int column, int count, uint8_t* samples) const;
    /** The same; row and columns may lie outside. */
    void CopyRow(int row, int firstColumn, int count, uint8_t* samples) const;
};

}  // namespace kvx::ipp
