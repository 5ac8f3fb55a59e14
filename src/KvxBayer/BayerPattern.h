/** The unpacked Bayer formats by pattern and depth. */
#pragma once

#include <cstdint>
#include <optional>

#include "KvxDemosaicing/KvxPixelFormat.h"

namespace kvx {

/** The colours of a frame's first two samples, in the numbers of the flat functions' argument `bayerPattern`. */
enum class BayerPattern : uint8_t { GR, RG, BG, GB };

constexpr bool IsGreenFirst(BayerPattern pattern) {
    return pattern == BayerPattern::GR || pattern == BayerPattern::GB;
}
/** True when the top row has blue sites, false when it has red ones. */
constexpr bool IsBlueOnTop(BayerPattern pattern) {
    return pattern == BayerPattern::BG || pattern == BayerPattern::GB;
}

/** The formats of one sample depth. */
struct BayerFormats {
    int depth;
    uint32_t sources[4];  // by BayerPattern
    uint32_t rgb, bgr;    // destinations

    constexpr uint32_t Source(BayerPattern pattern) const {
        return sources[static_cast<uint8_t>(pattern)];
    }
};

constexpr BayerFormats kBayerFormats[] = {
    {8,
     {KvxFormat_BayerGR8, KvxFormat_BayerRG8, KvxFormat_BayerBG8, KvxFormat_BayerGB8},
     KvxFormat_RGB8,
     KvxFormat_BGR8},
    {10,
     {KvxFormat_BayerGR10, KvxFormat_BayerRG10, KvxFormat_BayerBG10, KvxFormat_BayerGB10},
     KvxFormat_RGB10,
     KvxFormat_BGR10},
    {12,
     {KvxFormat_BayerGR12, KvxFormat_BayerRG12, KvxFormat_BayerBG12, KvxFormat_BayerGB12},
     KvxFormat_RGB12,
     KvxFormat_BGR12},
    {14,
     {KvxFormat_BayerGR14, KvxFormat_BayerRG14, KvxFormat_BayerBG14, KvxFormat_BayerGB14},
     KvxFormat_RGB14,
     KvxFormat_BGR14},
    {16,
     {KvxFormat_BayerGR16, KvxFormat_BayerRG16, KvxFormat_BayerBG16, KvxFormat_BayerGB16},
     KvxFormat_RGB16,
     KvxFormat_BGR16},
};

/** The pattern of an unpacked Bayer format; nothing for every other format. */
constexpr std::optional<BayerPattern> PatternOf(uint32_t pixelType) {
    for (const BayerFormats& formats : kBayerFormats)
        for (const BayerPattern pattern : {BayerPattern::GR, BayerPattern::RG, BayerPattern::BG, BayerPattern::GB})
            if (formats.Source(pattern) == pixelType) return pattern;
    return std::nullopt;
}

}  // namespace kvx
