/** What a destination format means to a TrueSense conversion. */
#pragma once

#include <cstdint>
#include <optional>

namespace kvx {

struct TrueSenseOutput {
    bool withAlpha;
    bool bgrOrder;
    bool toBytes;  ///< a 16-bit source becomes 8-bit samples: InitRGB() and CalculateRGB()
};

/** The output from a TrueSense source to this destination; nothing when there is no such conversion. */
std::optional<TrueSenseOutput> TrueSenseOutputOf(uint32_t srcPixelType, uint32_t dstPixelType) noexcept;

}  // namespace kvx
