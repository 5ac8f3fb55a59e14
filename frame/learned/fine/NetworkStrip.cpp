#include "frame/learned/fine/NetworkStrip.h"

namespace kvx::frame {
namespace {

/** A layer's rows: the three above a row, and the one that is written. */
constexpr size_t kHiddenRows = 4;

/** Cells with room on the right for what a group of cells reads and writes too much. */
size_t RowCells(size_t cells) {
    return cells + 2 * kCellSlack;
}

}  // namespace

// Row r of the result needs rows r - halo to r + halo of the input; its base, rows r - 1 to r + 1 of it.
NetworkStrip::NetworkStrip(const Network& network, size_t cells)
    : m_network(network),
      m_reader((cells + 2 * network.Halo()) * network.inputs / network.side),
      m_input(network.Halo() + 2, RowCells(cells + 2 * network.Halo()) * network.inputs),
      m_sigma(network.Halo() + 2, RowCells(cells + 2 * network.Halo())),
      m_result(RowCells(cells) * network.last.outputs) {
    for (size_t layer = 0; layer < network.hidden.size(); ++layer)
        m_hidden.emplace_back(kHiddenRows, RowCells(cells + 2 * (network.Halo() - 1 - layer)) * network.channels);
}

void NetworkStrip::ReadRow(const CellSource& source, const NoiseDeviation* noise, std::span<const uint8_t> measured,
                           const Area& area, int64_t row) {
    const size_t halo = m_network.Halo(), cells = area.cells + 2 * halo;
    m_reader.Read(source, row, area.left - static_cast<int64_t>(halo), cells, m_input.Row(row));
    if (noise) noise->OfCells(m_input.Row(row), cells, m_network.inputs, measured, m_sigma.Row(row));
}

CellRows NetworkStrip::Around(RowRing<int16_t>& ring, int64_t row, size_t skippedWords) {
    return {{ring.Row(row - 1) + skippedWords, ring.Row(row) + skippedWords, ring.Row(row + 1) + skippedWords}};
}

/** Rows of a layer begin a cell further to the right than those of the layer below. */
void NetworkStrip::HiddenLayerRow(size_t layer, int64_t row, size_t cells, bool hasNoise) {
    RowRing<int16_t>& below = layer == 0 ? m_input : m_hidden[layer - 1];
    const int16_t* const skip = layer == 0 ? nullptr : below.Row(row) + m_network.channels;
    const int16_t* const sigma = hasNoise ? m_sigma.Row(row) + layer + 1 : nullptr;
    HiddenRow(m_network.hidden[layer], Around(below, row, 0), skip, sigma, m_hidden[layer].Row(row),
              cells + 2 * (m_network.Halo() - 1 - layer));
}

const uint16_t* NetworkStrip::LastRow(int64_t row, size_t cells) {
    ResultRow(m_network, Around(m_hidden.back(), row, 0),
              Around(m_input, row, (m_network.Halo() - 1) * m_network.inputs), m_result.data(), cells);
    return m_result.data();
}

}  // namespace kvx::frame
