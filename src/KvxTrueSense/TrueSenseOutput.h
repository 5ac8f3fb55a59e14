/** What a destination means to a TrueSense conversion. */
#pragma once

#include <optional>

#include "KvxDemosaicing/KvxImage.h"
#include "KvxTrueSense/DemosaicerCall.h"

namespace kvx {

struct TrueSenseOutput {
    PixelLayout layout;
    bool toBytes;  ///< a 16-bit source becomes 8-bit samples
};

/** The output from a TrueSense source to this destination; nothing when there is no such conversion. */
std::optional<TrueSenseOutput> TrueSenseOutputOf(const _KvxImage& src, const _KvxImage& dst) noexcept;

/** The call that converts one record into the other, which TrueSenseOutputOf() knows. */
template <class Source, class Destination>
DemosaicerCall<Source, Destination> CallOf(const _KvxImage& src, const _KvxImage& dst, tagTrueSenseParam* params) {
    return {static_cast<const Source*>(src.data),
            {0, 0, src.width, src.height},
            {src.width, src.height},
            static_cast<int>(src.lineStep),
            static_cast<int>(src.pixelDepth),
            static_cast<Destination*>(dst.data),
            static_cast<int>(dst.lineStep),
            static_cast<unsigned char>(PixelTypeToTruesenseGrid(src.pixelType)),
            params};
}

}  // namespace kvx
