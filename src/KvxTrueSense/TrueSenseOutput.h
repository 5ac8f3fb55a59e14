/** Image records as a TrueSense conversion sees them. */
#pragma once

#include <optional>

#include "KvxDemosaicing/KvxImage.h"
#include "demosaicers/frame/TrueSenseCall.h"

namespace kvx {

inline bool IsTrueSense(uint32_t pixelType) {
    return PixelTypeToTruesenseGrid(pixelType) != -1;
}

struct TrueSenseOutput {
    PixelLayout layout;
    size_t sampleSize;
};

/** The output from a TrueSense source to this destination; nothing when there is no such conversion. */
std::optional<TrueSenseOutput> TrueSenseOutputOf(const _KvxImage& src, const _KvxImage& dst) noexcept;

/** The call that converts one whole image into the other, by what TrueSenseOutputOf() found. */
TrueSenseCall CallOf(const _KvxImage& src, const _KvxImage& dst, const TrueSenseOutput& output,
                     tagTrueSenseParam* params) noexcept;

/** The call that converts a whole frame of words whose rows the caller exchanges. */
TrueSenseCall CallOf(const _KvxImage& frame, bool isBytes, const RowExchange& exchange,
                     tagTrueSenseParam* params) noexcept;

}  // namespace kvx
