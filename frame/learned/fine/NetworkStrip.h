/** Runs a network down a strip of a frame, row by row of cells, in working memory that stays in cache. */
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "frame/learned/RowRing.h"
#include "frame/learned/fine/CellReader.h"
#include "frame/learned/fine/LayerRows.h"
#include "frame/learned/fine/NoiseDeviation.h"

namespace kvx::frame {

class NetworkStrip {
public:
    /** @param cells of the result's rows at most */
    NetworkStrip(const Network& network, size_t cells);

    /** Cells of the result: columns from `left` on, rows `top` to `bottom` - 1. */
    struct Area {
        int64_t top, bottom, left;
        size_t cells;
    };

    /**
     * Computes the rows of an area from top to bottom.
     *
     * @param noise null for a network without noise
     * @param take  gets each row: its number, words of the last filters, and the input's cells at the same places
     */
    template <class Take>
    void Run(const CellSource& source, const NoiseDeviation* noise, std::span<const uint8_t> measured, const Area& area,
             const Take& take) {
        // Layers compute two rows at once; the companion of an odd last row is not taken.
        const auto halo = static_cast<int64_t>(m_network.Halo()), top = area.top - halo;
        for (int64_t row = top; row < area.bottom + halo; row += 2) {
            ReadRow(source, noise, measured, area, row);
            ReadRow(source, noise, measured, area, row + 1);
            for (size_t layer = 0; layer < m_network.hidden.size(); ++layer) {
                const auto above = static_cast<int64_t>(layer) + 1;
                if (row - above < top + above) break;
                HiddenLayerRows(layer, row - above, area.cells, noise != nullptr);
            }
            const int64_t done = row - halo;
            if (done < area.top) continue;
            const RowPair<uint16_t> words = LastRows(done, area.cells);
            for (int64_t i = 0; i < std::min<int64_t>(2, area.bottom - done); ++i) {
                const int16_t* const input = m_input.Row(done + i);
                take(done + i, static_cast<const uint16_t*>(words.rows[i]), input + halo * m_network.inputs);
            }
        }
    }

private:
    void ReadRow(const CellSource& source, const NoiseDeviation* noise, std::span<const uint8_t> measured,
                 const Area& area, int64_t row);
    void HiddenLayerRows(size_t layer, int64_t row, size_t cells, bool hasNoise);
    RowPair<uint16_t> LastRows(int64_t row, size_t cells);

    const Network& m_network;
    CellReader m_reader;
    RowRing<int16_t> m_input, m_sigma;
    std::vector<RowRing<int16_t>> m_hidden;
    std::vector<uint16_t> m_result;
    LayerMemory m_memory;
};

}  // namespace kvx::frame
