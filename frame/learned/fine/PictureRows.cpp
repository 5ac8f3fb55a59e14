#include "frame/learned/fine/PictureRows.h"

#include <algorithm>

#include "frame/samples/SampleAt.h"

namespace kvx::frame {
namespace {

/** Rounds words to the picture's depth. */
template <class T>
void Narrow(const PictureRows& picture, const uint16_t* words, size_t count, uint8_t* out) {
    const uint32_t half = 1u << (16 - picture.sampleBits) >> 1;
    const int shift = 16 - picture.bits;
    for (size_t i = 0; i < count; ++i) PutSample<T>(out, i, std::min<uint32_t>(words[i] + half, 65535) >> shift);
}

}  // namespace

PictureWriter::PictureWriter(const Network& network, size_t cells)
    : m_network(network), m_row(3 * network.side * cells) {}

/** A row of pixels of all cells, in the picture's order of samples and pixels. */
void PictureWriter::Gather(const PictureRows& picture, const ResultCells& cells, size_t siteRow) {
    const size_t side = m_network.side;
    const ResultPlane* plane = m_network.results.data() + 3 * side * siteRow;
    for (size_t column = 0; column < side; ++column)
        for (size_t colour = 0; colour < 3; ++colour, ++plane) {
            const size_t sample = picture.isBlueFirst ? 2 - colour : colour;
            const size_t first = picture.isReversed ? side * cells.count - 1 - column : column;
            const ptrdiff_t step = static_cast<ptrdiff_t>(3 * side) * (picture.isReversed ? -1 : 1);
            uint16_t* out = m_row.data() + 3 * first + sample;
            if (plane->isComputed)
                for (size_t cell = 0; cell < cells.count; ++cell, out += step)
                    *out = cells.words[cell * m_network.last.outputs + plane->index];
            else
                for (size_t cell = 0; cell < cells.count; ++cell, out += step)
                    *out = static_cast<uint16_t>(cells.input[cell * m_network.inputs + plane->index] ^ 0x8000);
        }
}

void PictureWriter::Write(const PictureRows& picture, const ResultCells& cells) {
    const int64_t width = picture.width, end = cells.column + static_cast<int64_t>(cells.count * m_network.side);
    const int64_t left = std::max<int64_t>(cells.column, 0), right = std::min(end, width);
    if (left >= right) return;
    const int64_t place = picture.isReversed ? width - right : left;
    const int64_t skipped = picture.isReversed ? end - right : left - cells.column;
    const auto samples = static_cast<size_t>(3 * (right - left));
    for (size_t siteRow = 0; siteRow < m_network.side; ++siteRow) {
        const int64_t row = cells.row + static_cast<int64_t>(siteRow);
        if (row < 0 || row >= picture.height) continue;
        Gather(picture, cells, siteRow);
        auto* const out = static_cast<uint8_t*>(picture.data) + row * picture.stride;
        const uint16_t* const words = m_row.data() + 3 * skipped;
        if (picture.bits == 8)
            Narrow<uint8_t>(picture, words, samples, out + 3 * place);
        else
            Narrow<uint16_t>(picture, words, samples, out + 6 * place);
    }
}

}  // namespace kvx::frame
