#include "KvxTrueSense/TrueSenseOutput.h"

#include <climits>

#include "framework/PixelFormats.h"

namespace kvx {

std::optional<TrueSenseOutput> TrueSenseOutputOf(const _KvxImage& src, const _KvxImage& dst) noexcept {
    // As an int such a step would be negative, which has a meaning of its own to a demosaicer.
    if (src.lineStep > INT_MAX || dst.lineStep > INT_MAX) return std::nullopt;
    const bool fromBytes = Is8Bit(src.pixelType), bgrOrder = IsBlueFirst(dst.pixelType);
    switch (dst.pixelType) {
        case KvxFormat_RGB8:
        case KvxFormat_BGR8:
            return TrueSenseOutput{{false, bgrOrder}, !fromBytes};
        case KvxFormat_RGBa8:
        case KvxFormat_BGRa8:
            return TrueSenseOutput{{true, bgrOrder}, !fromBytes};
        case KvxFormat_RGB10:
        case KvxFormat_RGB12:
        case KvxFormat_RGB14:
        case KvxFormat_RGB16:
        case KvxFormat_BGR10:
        case KvxFormat_BGR12:
        case KvxFormat_BGR14:
        case KvxFormat_BGR16:
            if (fromBytes) return std::nullopt;
            return TrueSenseOutput{{false, bgrOrder}, false};
        default:
            return std::nullopt;
    }
}

}  // namespace kvx
