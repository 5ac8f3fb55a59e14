#include "demosaicers/interpolation/BayerLikeBand.h"

#include <algorithm>
#include <new>

#include "KvxBayer/MosaicRow.h"
#include "demosaicers/interpolation/HalfMosaic.h"

namespace kvx {

bool BayerLikeMemory::Reserve(int width) noexcept {
    m_rowBytes = static_cast<size_t>(width) * sizeof(int16_t) + 2 * kPadding;  // as long as the sums of half a row
    m_memory.reset(new (std::nothrow) uint8_t[m_rowBytes * kRows]());
    return m_memory != nullptr;
}

template <class Lane>
BayerLikeRows<Lane>::BayerLikeRows(const TrueSenseFrame& frame, const TrueSenseWorkspace& workspace,
                                   const BayerLikeMemory& memory, int firstRow, std::optional<uint16_t> evenColour)
    : m_frame(frame),
      m_workspace(workspace),
      m_memory(memory),
      m_rows(frame, workspace),
      m_evenColour(evenColour),
      m_halfHeight(frame.area.height / 2),
      m_nextColour(std::max((firstRow - 1) / 2, 0)),
      m_nextHalf(evenColour ? firstRow / 2 : std::clamp(m_nextColour, 1, std::max(m_halfHeight - 2, 1)) - 1),
      m_nextRow(std::max(2 * m_nextHalf - 1, 0)) {}

template <class Lane>
bool BayerLikeRows<Lane>::ReduceUntil(int halfRow) {
    for (; m_nextHalf <= halfRow; ++m_nextHalf) {
        const int even = 2 * m_nextHalf, odd = even + 1;
        for (; m_nextRow <= std::min(odd + 1, m_frame.area.height - 1); ++m_nextRow)
            if (!m_rows.Take(m_nextRow)) return false;
        m_rows.CompletePan(even);
        m_rows.CompletePan(odd);
        ReduceRowPair(m_rows.Row(even), m_rows.Row(odd), m_rows.Sites(), m_memory.Pan(even), m_memory.Pan(odd),
                      m_memory.Half(m_nextHalf));
    }
    return true;
}

template <class Lane>
bool BayerLikeRows<Lane>::ColourUntil(int halfRow) {
    for (; m_nextColour <= halfRow; ++m_nextColour) {
        uint16_t* const red = m_memory.Colour(0, m_nextColour);
        uint16_t* const green = m_memory.Colour(1, m_nextColour);
        uint16_t* const blue = m_memory.Colour(2, m_nextColour);
        if (m_evenColour) {
            for (uint16_t* const plane : {red, green, blue}) std::fill_n(plane, m_rows.Sites(), *m_evenColour);
            continue;
        }
        const int centre = std::clamp(m_nextColour, 1, m_halfHeight - 2);  // border rows repeat their neighbours
        if (!ReduceUntil(centre + 1)) return false;
        const auto half = [this](int row) { return reinterpret_cast<const uint8_t*>(m_memory.Half(row)); };
        const bool isBlueRow = centre % 2 == 0;  // B G / G R
        uint16_t* const planes[] = {isBlueRow ? blue : red, green, isBlueRow ? red : blue};
        ConvertMosaicPlanes({.above = half(centre - 1),
                             .centre = half(centre),
                             .below = half(centre + 1),
                             .sampleSize = sizeof(uint16_t),
                             .width = m_rows.Sites(),
                             .greenFirst = !isBlueRow,
                             .rowColourFirst = true,
                             .rule = GreenRule::Mean,
                             .output = {}},
                            planes);
    }
    return true;
}

template <class Lane>
bool BayerLikeRows<Lane>::Compute(int row) {
    const int near = row / 2, far = std::clamp(row % 2 == 0 ? near - 1 : near + 1, 0, m_halfHeight - 1);
    if (!ReduceUntil(near) || !ColourUntil(std::max(near, far))) return false;
    for (int channel = 0; channel < kChannels; ++channel)
        AddScaledUp(m_memory.Colour(channel, near), m_memory.Colour(channel, far), m_memory.Pan(row), m_rows.Sites(),
                    m_memory.Sums(), m_workspace.Plane(channel));
    return true;
}

template <class Lane>
std::optional<uint16_t> BayerLikeRows<Lane>::LeastDifference() {
    uint16_t least = UINT16_MAX;
    for (int row = 0; row < m_halfHeight; ++row) {
        if (!ReduceUntil(row)) return std::nullopt;
        least = std::min(least, *std::min_element(m_memory.Half(row), m_memory.Half(row) + m_rows.Sites()));
    }
    return least;
}

template class BayerLikeRows<int16_t>;
template class BayerLikeRows<int32_t>;

}  // namespace kvx
