#include "frame/learned/fine/CellReader.h"

#include <algorithm>

#include "frame/learned/FoldedIndex.h"

namespace kvx::frame {

/** `samples` samples from column `first` on, as words of 16 bits. */
const uint16_t* CellReader::ExtendedRow(const CellSource& source, int64_t row, int64_t first, size_t samples) {
    const int64_t width = source.width, channels = source.channels, side = static_cast<int64_t>(source.side);
    const int64_t inside = FoldedIndex(row, source.height, side);
    const auto readRow = static_cast<uint32_t>(source.isUpwards ? source.height - 1 - inside : inside);
    const auto copy = [&](int64_t column, int64_t count, int64_t to) {
        uint16_t* const out = m_row.data() + to * channels;
        const int64_t place = source.isReversed ? width - column - count : column;
        source.rows.read(source.rows.context, readRow, static_cast<uint32_t>(place), static_cast<uint32_t>(count), out);
        if (source.isReversed) std::reverse(out, out + count);
    };
    const int64_t end = first + static_cast<int64_t>(samples);
    const int64_t insideFirst = std::clamp<int64_t>(first, 0, width), insideEnd = std::clamp<int64_t>(end, 0, width);
    for (int64_t column = first; column < std::min(end, int64_t{0}); ++column)
        copy(FoldedIndex(column, width, side), 1, column - first);
    if (insideFirst < insideEnd) copy(insideFirst, insideEnd - insideFirst, insideFirst - first);
    for (int64_t column = std::max(first, width); column < end; ++column)
        copy(FoldedIndex(column, width, side), 1, column - first);
    if (const int shift = 16 - source.bits; shift > 0)
        for (uint16_t& word : m_row) word = static_cast<uint16_t>(word << shift);
    return m_row.data();
}

void CellReader::Read(const CellSource& source, int64_t cellRow, int64_t first, size_t cells, int16_t* out) {
    const size_t side = source.side, words = side * source.channels, planes = side * words;
    const int64_t top = cellRow * static_cast<int64_t>(side) - source.rowPhase;
    const int64_t left = first * static_cast<int64_t>(side) - source.columnPhase;
    for (size_t row = 0; row < side; ++row) {
        const uint16_t* const in = ExtendedRow(source, top + static_cast<int64_t>(row), left, cells * side);
        for (size_t cell = 0; cell < cells; ++cell)
            for (size_t i = 0; i < words; ++i)
                out[cell * planes + row * words + i] = static_cast<int16_t>(in[cell * words + i] ^ 0x8000);
    }
}

}  // namespace kvx::frame
