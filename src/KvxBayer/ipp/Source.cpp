#include "KvxBayer/ipp/Source.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace kvx::ipp {
namespace {

/** The row or column for any index: mirrored at both ends. */
int Mirrored(int index, int size) {
    const int whole = size + size % 2;  // including the one that completes the last cell of the pattern
    const int period = 2 * (whole - 1);
    const int folded = std::abs(index) % period;
    const int inside = folded < whole ? folded : period - folded;
    return inside < size ? inside : inside - 2;
}

}  // namespace

void Source::Copy(int row, int column, int count, uint8_t* samples) const {
    if (exchange) {
        exchange->Read(static_cast<uint32_t>(row), static_cast<uint32_t>(column), static_cast<uint32_t>(count),
                       reinterpret_cast<uint16_t*>(samples));
        return;
    }
    const auto bytes = static_cast<size_t>(sampleBytes);
    std::memcpy(samples, data + static_cast<size_t>(row) * lineStep + static_cast<size_t>(column) * bytes,
                static_cast<size_t>(count) * bytes);
}

void Source::CopyRow(int row, int firstColumn, int count, uint8_t* samples) const {
    const int line = Mirrored(row, height);
    const auto bytes = static_cast<size_t>(sampleBytes);
    const auto at = [&](int i) { return samples + static_cast<size_t>(i) * bytes; };
    const int begin = std::clamp(-firstColumn, 0, count);
    const int end = std::clamp(width - firstColumn, begin, count);
    if (end > begin) Copy(line, firstColumn + begin, end - begin, at(begin));
    const auto copyMirrored = [&](int from, int to) {
        for (int i = from; i < to; ++i) {
            const int column = Mirrored(firstColumn + i, width), inside = column - firstColumn;
            if (inside >= begin && inside < end)
                std::memcpy(at(i), at(inside), bytes);
            else
                Copy(line, column, 1, at(i));
        }
    };
    copyMirrored(0, begin);
    copyMirrored(end, count);
}

}  // namespace kvx::ipp
