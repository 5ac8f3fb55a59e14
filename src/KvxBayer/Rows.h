/** Rows of equal length somewhere in memory, of any alignment. */
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "KvxBayer/BayerConversion.h"

namespace kvx {

struct Rows {
    uint8_t* data;
    size_t step;  // bytes from row to row

    uint8_t* operator[](int64_t row) const {
        return data + row * static_cast<int64_t>(step);
    }
    bool IsAligned(size_t sampleSize) const {
        return step % sampleSize == 0 && reinterpret_cast<uintptr_t>(data) % sampleSize == 0;
    }
};

inline Rows RowsOf(const _KvxImage& image) {
    return {static_cast<uint8_t*>(image.data), image.lineStep};
}

/** Zeros what a row of four-byte slots has beyond its 3 x width bytes of picture. */
inline void ClearSlots(const BayerOutput& output, const Rows& destination, int64_t row, size_t width) {
    if (!output.fourByteSlots) return;
    const size_t pictureBytes = 3 * width;
    std::memset(destination[row] + pictureBytes, 0, std::min(destination.step, 4 * width) - pictureBytes);
}

}  // namespace kvx
