/** Cells from a frame or a picture: what a network reads. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "KvxDemosaicing/KvxRows.h"

namespace kvx::frame {

/** Rows of a frame, or of a picture of red, green and blue. */
struct CellSource {
    KvxRowSource rows;              ///< words, of all channels
    uint32_t width, height;         ///< of the whole frame
    uint32_t channels;              ///< 1 or 3
    int bits;                       ///< of a word
    size_t side;                    ///< of a cell
    int64_t rowPhase, columnPhase;  ///< of the frame's first sample within its cell
    bool isUpwards;                 ///< whether row 0 is the last row of the frame
    bool isReversed;                ///< whether column 0 is the last sample of a row; only for 1 channel
};

/** Reads rows of cells, with a working row of its own. */
class CellReader {
public:
    /** @param samples of a row of cells at most, of all channels */
    explicit CellReader(size_t samples) : m_row(samples) {}

    /** Cells `first` to `first` + `cells` - 1 of a row of cells, as signed words; all may lie outside the frame. */
    void Read(const CellSource& source, int64_t cellRow, int64_t first, size_t cells, int16_t* out);

private:
    const uint16_t* ExtendedRow(const CellSource& source, int64_t row, int64_t first, size_t samples);

    std::vector<uint16_t> m_row;
};

}  // namespace kvx::frame
