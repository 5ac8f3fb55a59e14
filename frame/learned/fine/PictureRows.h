/** Pixels from the cells of a network's result. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "frame/learned/fine/Network.h"

namespace kvx::frame {

/** Where pixels of three samples go, and their depth. */
struct PictureRows {
    void* data;  ///< of row 0
    ptrdiff_t stride;
    uint32_t width, height;
    int sampleBits;  ///< depth to which words are rounded
    int bits;        ///< of a stored sample: sampleBits, or the upper 8 of them
    bool isBlueFirst;
    bool isReversed;  ///< whether column 0 is the last pixel of a row in memory
};

/** A row of cells: words of the filters' results, and the cells of the input at the same places. */
struct ResultCells {
    const uint16_t* words;
    const int16_t* input;
    size_t count;
    int64_t row, column;  ///< of the picture, of the first cell's first site; may be negative
};

/** Stores rows of cells, with a working row of its own. */
class PictureWriter {
public:
    /** @param cells of a row at most */
    PictureWriter(const Network& network, size_t cells);

    /** Stores the pixels of a row of cells that lie in the picture. */
    void Write(const PictureRows& picture, const ResultCells& cells);

private:
    void Gather(const PictureRows& picture, const ResultCells& cells, size_t siteRow);

    const Network& m_network;
    std::vector<uint16_t> m_row;
};

}  // namespace kvx::frame
