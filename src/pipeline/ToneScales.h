/** The built-in tone curve. */
#pragma once

#include <array>
#include <cstdint>

namespace kvx {

/** 8-bit display values by 12-bit linear values. */
extern const std::array<uint16_t, 4096> Tonescale12;
inline constexpr const auto& Tonescale12Table = Tonescale12;

/** The same at 12 bits. */
extern const std::array<uint16_t, 4096> Tonescale12Table12;

}  // namespace kvx
