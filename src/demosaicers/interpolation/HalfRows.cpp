#include "demosaicers/interpolation/HalfRows.h"

#include <new>

namespace kvx {

bool TrueSenseWorkspace::Reserve(int width) noexcept {
    constexpr size_t line = 64;  // of the cache; never shared between arrays
    const auto sites = static_cast<size_t>(width);
    m_halfRowBytes = (sites / 2 * sizeof(int32_t) + line - 1) / line * line + 2 * kPadding;
    m_lineBytes = (sites * sizeof(int16_t) + line - 1) / line * line + 2 * kPadding;
    const size_t bytes = m_halfRowBytes * kArrays * kRingRows + m_lineBytes * kLines;
    m_memory.reset(new (std::nothrow) uint8_t[bytes + line]());  // zero: vectors also compute on what no row has filled
    if (!m_memory) return false;
    m_base = m_memory.get() + line - reinterpret_cast<uintptr_t>(m_memory.get()) % line;
    return true;
}

}  // namespace kvx
