/** Pixels from the cells of a network's result. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "KvxDemosaicing/KvxRows.h"
#include "frame/learned/fine/Network.h"

namespace kvx::frame {

/** Where pixels go, and their depth. */
struct PictureRows {
    KvxPixelSink sink;
    uint32_t width, height;
    int sampleBits;   ///< depth to which words are rounded
    int bits;         ///< of a result: sampleBits, or the upper 8 of them
    bool isUpwards;   ///< whether row 0 is the last row of the picture
    bool isReversed;  ///< whether column 0 is the last pixel of a row
};

/** A row of cells: words of the filters' results, and the cells of the input at the same places. */
struct ResultCells {
    const uint16_t* words;
    const int16_t* input;
    size_t count;
    int64_t row, column;  ///< of the picture, of the first cell's first site; may be negative
};

/** Writes rows of cells, with working rows of its own. */
class PictureWriter {
public:
    /** @param cells of a row at most */
    PictureWriter(const Network& network, size_t cells);

    /** Writes the pixels of a row of cells that lie in the picture. */
    void Write(const PictureRows& picture, const ResultCells& cells);

private:
    void Gather(const PictureRows& picture, const ResultCells& cells, size_t siteRow);

    const Network& m_network;
    size_t m_length;  // of a plane
    std::vector<uint16_t> m_planes;
};

}  // namespace kvx::frame
