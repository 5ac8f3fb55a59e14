/** The last step of a conversion: matrix, table, channel order and alpha in one pass over a part of a row. */
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "KvxFrame/Format.h"

namespace kvx::frame {

/** Coefficients for 16-bit values, row by row. */
using PixelMatrix = std::array<float, 9>;

/** Red, green and blue of a part of a row. */
using PixelPlanes = std::array<const uint16_t*, 3>;

/** Parameters of the step, the same for all rows. At most one of the shift and a table changes values. */
struct PictureStep {
    Format destination;                   ///< a colour format
    const PixelMatrix* matrix = nullptr;  ///< or null
    int shift = 0;                        ///< to the right
    const uint8_t* byteTable = nullptr;   ///< 65536 results of 8 bits, or null
    const uint16_t* wordTable = nullptr;  ///< the same for more bits
};

/** A value between 0 and 65535, rounded half up. @param row three coefficients */
inline uint16_t MatrixValue(const float* row, uint16_t red, uint16_t green, uint16_t blue) {
    const float sum =
        row[0] * static_cast<float>(red) + row[1] * static_cast<float>(green) + row[2] * static_cast<float>(blue);
    const float limited = sum < 0 ? 0 : sum > 65535 ? 65535 : sum;
    return static_cast<uint16_t>(static_cast<int32_t>(limited + 0.5F));
}

/**
 * Writes `count` pixels.
 * @param planes 64 bytes more may be read
 * @param out    at any address
 */
void MakePictureRow(const PictureStep& step, const PixelPlanes& planes, size_t count, uint8_t* out);

}  // namespace kvx::frame
