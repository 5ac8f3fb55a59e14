/** Black level and gains of one row of a mosaic. */
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace kvx::frame {

/** Parameters of a row; its columns use the levels and factors in turn. */
struct RowBalance {
    uint16_t largest;               ///< larger samples count as this; it fits 16 bits after the shift
    uint8_t leftShift;              ///< scales samples to 16 bits
    uint8_t scale;                  ///< binary places of the factors, 0 to 17
    uint16_t limit;                 ///< the largest result
    std::array<uint16_t, 4> white;  ///< 16-bit white levels; larger values count as white
    std::array<uint16_t, 4> black;  ///< 16-bit black levels
    std::array<uint16_t, 4> factors;

    /** The parameters of the row from a column on. */
    RowBalance From(uint32_t column) const {
        RowBalance moved = *this;
        for (std::array<uint16_t, 4>* turns : {&moved.white, &moved.black, &moved.factors})
            std::rotate(turns->begin(), turns->begin() + column % 4, turns->end());
        return moved;
    }
};

/** The rule for light, which is a value without its black level. */
inline uint16_t BalancedLight(const RowBalance& balance, uint32_t light, size_t column) {
    // 65535 * 65535 + 2^16 is less than 2^32.
    const uint32_t product = light * balance.factors[column % 4] + ((1u << balance.scale) >> 1);
    return static_cast<uint16_t>(std::min(product >> balance.scale, uint32_t{balance.limit}));
}

/** The rule for one sample. */
inline uint16_t BalancedSample(const RowBalance& balance, uint16_t sample, size_t column) {
    const uint32_t wide = uint32_t{std::min(sample, balance.largest)} << balance.leftShift;
    const uint32_t value = std::min(wide, uint32_t{balance.white[column % 4]});
    const uint32_t black = balance.black[column % 4];
    return BalancedLight(balance, value > black ? value - black : 0, column);
}

/** Applies it to `count` samples. @param to may be `from` */
void BalanceRow(const RowBalance& balance, const uint16_t* from, uint16_t* to, size_t count);

}  // namespace kvx::frame
