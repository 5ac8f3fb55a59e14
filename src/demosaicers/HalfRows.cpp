#include "demosaicers/HalfRows.h"

#include <cstring>

namespace kvx {

bool TrueSenseWorkspace::Reserve(int width) noexcept {
    constexpr size_t line = 64;  // cache lines are never shared between arrays
    const size_t sites = static_cast<size_t>(width);
    m_halfRowBytes = (sites / 2 * sizeof(int32_t) + line - 1) / line * line + 2 * kPadding;
    m_lineBytes = (sites * sizeof(int16_t) + line - 1) / line * line + 2 * kPadding;
    const size_t bytes = m_halfRowBytes * kArrays * kRingRows + m_lineBytes * kLines;
    m_memory = hwy::AllocateAligned<uint8_t>(bytes);
    if (!m_memory) return false;
    std::memset(m_memory.get(), 0, bytes);  // vectors also compute on what no row has filled
    return true;
}

}  // namespace kvx
