/** The patterns of Bayer mosaics, and the formats that have them. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
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

/** The unpacked Bayer formats: a row for each depth, by BayerPattern. */
constexpr uint32_t kBayerFormats[][4] = {
    {KvxFormat_BayerGR8, KvxFormat_BayerRG8, KvxFormat_BayerBG8, KvxFormat_BayerGB8},
    {KvxFormat_BayerGR10, KvxFormat_BayerRG10, KvxFormat_BayerBG10, KvxFormat_BayerGB10},
    {KvxFormat_BayerGR12, KvxFormat_BayerRG12, KvxFormat_BayerBG12, KvxFormat_BayerGB12},
    {KvxFormat_BayerGR14, KvxFormat_BayerRG14, KvxFormat_BayerBG14, KvxFormat_BayerGB14},
    {KvxFormat_BayerGR16, KvxFormat_BayerRG16, KvxFormat_BayerBG16, KvxFormat_BayerGB16},
};

/** The pattern of an unpacked Bayer format; nothing for every other format. */
constexpr std::optional<BayerPattern> PatternOf(uint32_t pixelType) {
    for (const auto& formats : kBayerFormats)
        for (size_t pattern = 0; pattern < std::size(formats); ++pattern)
            if (formats[pattern] == pixelType) return static_cast<BayerPattern>(pattern);
    return std::nullopt;
}

}  // namespace kvx
