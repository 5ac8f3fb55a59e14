#include "frame/learned/fine/NetworkStrip.h"

namespace kvx::frame {
namespace {

/** A layer's rows: those that the next layer reads for two rows of its own. */
constexpr size_t kHiddenRows = 4;

/** Cells with room on the right for what a group of cells reads and writes too much. */
size_t RowCells(size_t cells) {
    return cells + 2 * kCellSlack;
}

/** The rows around `row` and the next one. */
CellRows Around(RowRing<int16_t>& ring, int64_t row, size_t skippedWords) {
    return {{ring.Row(row - 1) + skippedWords, ring.Row(row) + skippedWords, ring.Row(row + 1) + skippedWords,
             ring.Row(row + 2) + skippedWords}};
}

RowPair<const int16_t> PairAt(RowRing<int16_t>& ring, int64_t row, size_t skippedWords) {
    return {{ring.Row(row) + skippedWords, ring.Row(row + 1) + skippedWords}};
}

}  // namespace

// Rows r and r + 1 of the result need rows r - halo to r + 1 + halo of the input; their base, rows r - 1 to r + 2.
NetworkStrip::NetworkStrip(const Network& network, size_t cells)
    : m_network(network),
      m_reader((cells + 2 * network.Halo()) * network.inputs / network.side),
      m_input(network.Halo() + 3, RowCells(cells + 2 * network.Halo()) * network.inputs),
      m_sigma(network.Halo() + 3, RowCells(cells + 2 * network.Halo())),
      m_result(2 * RowCells(cells) * network.last.outputs),
      m_memory(network) {
    for (size_t layer = 0; layer < network.hidden.size(); ++layer)
        m_hidden.emplace_back(kHiddenRows, RowCells(cells + 2 * (network.Halo() - 1 - layer)) * network.channels);
}

void NetworkStrip::ReadRow(const CellSource& source, const NoiseDeviation* noise, std::span<const uint8_t> measured,
                           const Area& area, int64_t row) {
    const size_t halo = m_network.Halo(), cells = area.cells + 2 * halo;
    m_reader.Read(source, row, area.left - static_cast<int64_t>(halo), cells, m_input.Row(row));
    if (noise) noise->OfCells(m_input.Row(row), cells, m_network.inputs, measured, m_sigma.Row(row));
}

/** Rows of a layer begin a cell further to the right than those of the layer below. */
void NetworkStrip::HiddenLayerRows(size_t layer, int64_t row, size_t cells, bool hasNoise) {
    RowRing<int16_t>&below = layer == 0 ? m_input : m_hidden[layer - 1], &own = m_hidden[layer];
    RowPair<const int16_t> skip{}, sigma{};
    if (layer > 0) skip = PairAt(below, row, m_network.channels);
    if (hasNoise) sigma = PairAt(m_sigma, row, layer + 1);
    HiddenRows(m_network.hidden[layer], Around(below, row, 0), skip, sigma, {{own.Row(row), own.Row(row + 1)}},
               cells + 2 * (m_network.Halo() - 1 - layer), m_memory);
}

RowPair<uint16_t> NetworkStrip::LastRows(int64_t row, size_t cells) {
    const RowPair<uint16_t> result{{m_result.data(), m_result.data() + m_result.size() / 2}};
    ResultRows(m_network, Around(m_hidden.back(), row, 0),
               Around(m_input, row, (m_network.Halo() - 1) * m_network.inputs), result, cells, m_memory);
    return result;
}

}  // namespace kvx::frame
