/** Black level and gains of one row of a mosaic. */
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace kvx::frame {

/** Parameters of a row; its columns use the factors in turn. */
struct RowBalance {
    uint16_t white;     ///< larger samples count as white
    uint8_t leftShift;  ///< scales samples to 16 bits
    uint16_t black;     ///< 16-bit black level
    uint8_t scale;      ///< binary places of the factors, 0 to 17
    uint16_t limit;     ///< the largest result
    std::array<uint16_t, 4> factors;

    /** The parameters of the row from a column on. */
    RowBalance From(uint32_t column) const {
        RowBalance moved = *this;
        std::rotate(moved.factors.begin(), moved.factors.begin() + column % 4, moved.factors.end());
        return moved;
    }
};

/** The rule for one sample. */
inline uint16_t BalancedSample(const RowBalance& balance, uint16_t sample, size_t column) {
    const uint32_t value = uint32_t{std::min(sample, balance.white)} << balance.leftShift;
    const uint32_t light = value > balance.black ? value - balance.black : 0;
    // 65535 * 65535 + 2^16 is less than 2^32.
    const uint32_t product = light * balance.factors[column % 4] + ((1u << balance.scale) >> 1);
    return static_cast<uint16_t>(std::min(product >> balance.scale, uint32_t{balance.limit}));
}

/** Applies it to `count` samples, in place. */
void BalanceRow(const RowBalance& balance, uint16_t* samples, size_t count);

}  // namespace kvx::frame
