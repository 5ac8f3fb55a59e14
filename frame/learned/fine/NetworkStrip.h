/** Runs a network down a strip of a frame, row by row of cells, in working memory that stays in cache. */
#pragma once

#include <cstdint>
#include <vector>

#include "frame/learned/RowRing.h"
#include "frame/learned/fine/CellReader.h"
#include "frame/learned/fine/LayerRow.h"
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
        const auto halo = static_cast<int64_t>(m_network.Halo());
        for (int64_t row = area.top - halo; row < area.bottom + halo; ++row) {
            ReadRow(source, noise, measured, area, row);
            for (size_t layer = 0; layer < m_network.hidden.size(); ++layer) {
                const int64_t done = row - 1 - static_cast<int64_t>(layer);
                if (done < area.top - halo + 1 + static_cast<int64_t>(layer)) break;
                HiddenLayerRow(layer, done, area.cells, noise != nullptr);
            }
            if (const int64_t done = row - halo; done >= area.top) {
                const uint16_t* const words = LastRow(done, area.cells);
                take(done, words, static_cast<const int16_t*>(m_input.Row(done) + m_network.Halo() * m_network.inputs));
            }
        }
    }

private:
    void ReadRow(const CellSource& source, const NoiseDeviation* noise, std::span<const uint8_t> measured,
                 const Area& area, int64_t row);
    void HiddenLayerRow(size_t layer, int64_t row, size_t cells, bool hasNoise);
    const uint16_t* LastRow(int64_t row, size_t cells);
    CellRows Around(RowRing<int16_t>& ring, int64_t row, size_t skippedWords);

    const Network& m_network;
    CellReader m_reader;
    RowRing<int16_t> m_input, m_sigma;
    std::vector<RowRing<int16_t>> m_hidden;
    std::vector<uint16_t> m_result;
};

}  // namespace kvx::frame
