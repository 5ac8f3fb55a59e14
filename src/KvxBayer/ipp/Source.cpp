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

void Source::CopyRow(int row, int firstColumn, int count, uint8_t* samples) const {
    const uint8_t* line = data + static_cast<size_t>(Mirrored(row, height)) * lineStep;
    const auto bytes = static_cast<size_t>(sampleBytes);
    const auto copyMirrored = [&](int from, int to) {
        for (int i = from; i < to; ++i)
            std::memcpy(samples + static_cast<size_t>(i) * bytes,
                        line + static_cast<size_t>(Mirrored(firstColumn + i, width)) * bytes, bytes);
    };
    const int begin = std::clamp(-firstColumn, 0, count);
    const int end = std::clamp(width - firstColumn, begin, count);
    copyMirrored(0, begin);
    if (end > begin)
        std::memcpy(samples + static_cast<size_t>(begin) * bytes,
                    line + static_cast<size_t>(firstColumn + begin) * bytes, static_cast<size_t>(end - begin) * bytes);
    copyMirrored(end, count);
}

}  // namespace kvx::ipp
