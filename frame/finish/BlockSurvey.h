/** The colours of a frame in coarse blocks, from which white balance and exposure are measured. */
#pragma once

#include <array>
#include <vector>

#include "KvxFrame/Finish.h"

namespace kvx::frame {

/** Mean red, green and blue of a block of tiles: linear light, 0 for black, 1 for white. */
struct Block {
    std::array<float, 3> light;
    bool isClipped;  ///< a red, green or blue sample is in the top 1/64 of its range
};

/** Keeps its memory between frames. */
class BlockSurvey {
public:
    /**
     * Divides the frame into square blocks of whole tiles, at least 192 along the shorter side if it has as many tiles.
     * Blocks average noise and see the clipped sample next to a bright edge. Of frames with more than 511 rows of tiles
     * it reads evenly spaced rows of blocks. Clear sites do not count; in mono frames every site is of all colours.
     *
     * @param source a valid view
     * @param finish its levels fit the source
     * @return the blocks, valid until the next call; none for frames smaller than a tile
     */
    const std::vector<Block>& Measure(const SourceView& source, const Finish& finish);

private:
    /** The samples of a row of blocks that have the same row in their tiles, column by column. */
    struct Columns {
        std::vector<uint32_t> sums;
        std::vector<uint16_t> largest;
    };

    void AddRow(const SourceView& source, uint32_t row, Columns& columns);

    std::vector<uint16_t> m_row;
    std::vector<Columns> m_columns;
    std::vector<Block> m_blocks;
};

}  // namespace kvx::frame
