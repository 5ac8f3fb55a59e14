/** The last step of a conversion: matrix, table, channel order and alpha in one pass over a row. */
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "KvxFrame/Format.h"

namespace kvx::frame {

/** Coefficients for 16-bit values, row by row. */
using PixelMatrix = std::array<float, 9>;

/** Parameters of the step, the same for all rows. */
struct PictureStep {
    uint32_t channels;          ///< of the input: 1 (grey), or 3 in the destination's order
    uint32_t sampleBytes;       ///< of the input: 1 or 2
    Format destination;         ///< a colour format
    const PixelMatrix* matrix;  ///< or null
    const uint16_t* table;      ///< 65536 entries, or null
};

/** A value between 0 and 65535, rounded half up. @param row three coefficients */
inline uint16_t MatrixValue(const float* row, uint16_t red, uint16_t green, uint16_t blue) {
    const float sum =
        row[0] * static_cast<float>(red) + row[1] * static_cast<float>(green) + row[2] * static_cast<float>(blue);
    const float limited = sum < 0 ? 0 : sum > 65535 ? 65535 : sum;
    return static_cast<uint16_t>(static_cast<int32_t>(limited + 0.5F));
}

/** Writes a row of `width` pixels. `in` and `out` may start at the same byte if pixels do not shrink. */
void MakePictureRow(const PictureStep& step, const uint8_t* in, uint8_t* out, size_t width);

}  // namespace kvx::frame
