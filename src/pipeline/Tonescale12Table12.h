/** The built-in tone curve at 12 bits. */
#pragma once

#include <array>
#include <cstdint>

namespace kvx {

/** 12-bit display values by 12-bit linear values. */
extern const std::array<uint16_t, 4096> Tonescale12Table12;

}  // namespace kvx
