#include "frame/learned/fine/PictureRows.h"

#include <algorithm>

namespace kvx::frame {

PictureWriter::PictureWriter(const Network& network, size_t cells)
    : m_network(network), m_length(network.side * cells + KVX_ROW_PADDING / sizeof(uint16_t)), m_planes(3 * m_length) {}

/** A row of pixels of all cells, in the picture's order. */
void PictureWriter::Gather(const PictureRows& picture, const ResultCells& cells, size_t siteRow) {
    const size_t side = m_network.side;
    const ResultPlane* plane = m_network.results.data() + 3 * side * siteRow;
    for (size_t column = 0; column < side; ++column)
        for (size_t colour = 0; colour < 3; ++colour, ++plane) {
            const size_t first = picture.isReversed ? side * cells.count - 1 - column : column;
            const auto step = static_cast<ptrdiff_t>(side) * (picture.isReversed ? -1 : 1);
            uint16_t* out = m_planes.data() + colour * m_length + first;
            if (plane->isComputed)
                for (size_t cell = 0; cell < cells.count; ++cell, out += step)
                    *out = cells.words[cell * m_network.last.outputs + plane->index];
            else
                for (size_t cell = 0; cell < cells.count; ++cell, out += step)
                    *out = static_cast<uint16_t>(cells.input[cell * m_network.inputs + plane->index] ^ 0x8000);
        }
    const uint32_t half = 1u << (16 - picture.sampleBits) >> 1;
    for (uint16_t& word : m_planes)
        word = static_cast<uint16_t>(std::min<uint32_t>(word + half, 65535) >> (16 - picture.bits));
}

void PictureWriter::Write(const PictureRows& picture, const ResultCells& cells) {
    const int64_t width = picture.width, end = cells.column + static_cast<int64_t>(cells.count * m_network.side);
    const int64_t left = std::max<int64_t>(cells.column, 0), right = std::min(end, width);
    if (left >= right) return;
    const int64_t place = picture.isReversed ? width - right : left;
    const int64_t skipped = picture.isReversed ? end - right : left - cells.column;
    for (size_t siteRow = 0; siteRow < m_network.side; ++siteRow) {
        const int64_t row = cells.row + static_cast<int64_t>(siteRow);
        if (row < 0 || row >= picture.height) continue;
        Gather(picture, cells, siteRow);
        const uint16_t* const red = m_planes.data() + skipped;
        picture.sink.write(
            picture.sink.context, static_cast<uint32_t>(picture.isUpwards ? picture.height - 1 - row : row),
            static_cast<uint32_t>(place), static_cast<uint32_t>(right - left), red, red + m_length, red + 2 * m_length);
    }
}

}  // namespace kvx::frame
