#include "KvxBayer/ipp/NarrowFrame.h"

#include <algorithm>

namespace kvx::ipp {
namespace {

/** The next index of the other parity, or the same one where there is none. */
int Neighbour(int index, int size) {
    return index + 1 < size ? index + 1 : std::max(index - 1, 0);
}

}  // namespace

Source NarrowFrame::Widened(const Source& source) {
    if (source.width > 1 && source.height > 1) return source;
    Source wide = source;
    wide.exchange = nullptr;
    wide.width = std::max(source.width, 2);
    wide.height = std::max(source.height, 2);
    const auto bytes = static_cast<size_t>(source.sampleBytes);
    wide.lineStep = static_cast<size_t>(wide.width) * bytes;
    m_samples.resize(static_cast<size_t>(wide.height) * wide.lineStep);
    wide.data = m_samples.data();
    for (int row = 0; row < wide.height; ++row)
        for (int column = 0; column < wide.width; ++column) {
            const bool added = row >= source.height || column >= source.width;
            const bool green = column % 2 != wide.Phase(row);
            int fromRow = std::min(row, source.height - 1), fromColumn = std::min(column, source.width - 1);
            if (added && green) {  // one step along the frame's only line
                if (source.width == 1) fromRow = Neighbour(fromRow, source.height);
                if (source.height == 1) fromColumn = Neighbour(fromColumn, source.width);
            }
            source.Copy(fromRow, fromColumn, 1,
                        &m_samples[static_cast<size_t>(row) * wide.lineStep + static_cast<size_t>(column) * bytes]);
        }
    return wide;
}

}  // namespace kvx::ipp
