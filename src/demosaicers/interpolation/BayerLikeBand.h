/** A band of rows of the Bayer-like TrueSense demosaicer, streamed through rings of rows of half and full size. */
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "demosaicers/frame/TrueSenseFrame.h"
#include "demosaicers/frame/TrueSenseTile.h"
#include "demosaicers/interpolation/TrueSenseBand.h"

namespace kvx {

/** Per-thread memory, in addition to the workspace: rows of pan, of the half mosaic and of its three colours. */
class BayerLikeMemory {
public:
    /** Makes room for rows of `width` sites, a multiple of 4. @return false without memory */
    bool Reserve(int width) noexcept;

    int16_t* Pan(int row) const {
        return Words<int16_t>(row % kPanRows);
    }
    uint16_t* Half(int row) const {
        return Words<uint16_t>(kPanRows + row % kHalfRows);
    }
    uint16_t* Colour(int channel, int row) const {
        return Words<uint16_t>(kPanRows + kHalfRows + kColourRows * channel + row % kColourRows);
    }
    int32_t* Sums() const {
        return Words<int32_t>(kPanRows + kHalfRows + kColourRows * kChannels);
    }

private:
    // Three rows of the half mosaic make a row of colours, two of those a row of the working area; pan waits for them.
    static constexpr int kPanRows = 8, kHalfRows = 4, kColourRows = 3;
    static constexpr int kRows = kPanRows + kHalfRows + kColourRows * kChannels + 1;
    static constexpr size_t kPadding = 256;  // bytes on either side

    template <class Word>
    Word* Words(int row) const {
        return reinterpret_cast<Word*>(m_memory.get() + m_rowBytes * row + kPadding);
    }

    std::unique_ptr<uint8_t[]> m_memory;
    size_t m_rowBytes = 0;
};

/** Computes rows from top to bottom. */
template <class Lane>
class BayerLikeRows {
public:
    /**
     * @param firstRow of the working area, the first to be asked for
     * @param evenColour see LeastDifference(); nothing for frames with colours
     */
    BayerLikeRows(const TrueSenseFrame& frame, const TrueSenseWorkspace& workspace, const BayerLikeMemory& memory,
                  int firstRow, std::optional<uint16_t> evenColour);

    /** Puts a row of the working area into the workspace's planes. @return false when Lane cannot hold the samples */
    bool Compute(int row);

    /** The least value of the half mosaic, or nothing when Lane cannot hold the samples. */
    std::optional<uint16_t> LeastDifference();

private:
    bool ReduceUntil(int halfRow);
    bool ColourUntil(int halfRow);

    const TrueSenseFrame& m_frame;
    const TrueSenseWorkspace& m_workspace;
    const BayerLikeMemory& m_memory;
    WorkingRows<Lane> m_rows;
    std::optional<uint16_t> m_evenColour;
    int m_halfHeight, m_nextColour, m_nextHalf, m_nextRow;
};

/** OpenCV's Bayer conversion gives black for fewer than three rows or columns: regions of one tile in a direction. */
inline bool HasBayerLikeColours(const TrueSenseFrame& frame) {
    return frame.area.width > kTileSize && frame.area.height > kTileSize;
}

}  // namespace kvx
