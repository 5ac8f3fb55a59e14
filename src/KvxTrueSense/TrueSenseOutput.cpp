#include "KvxTrueSense/TrueSenseOutput.h"

#include "framework/PixelFormats.h"

namespace kvx {

std::optional<TrueSenseOutput> TrueSenseOutputOf(uint32_t srcPixelType, uint32_t dstPixelType) noexcept {
    const bool bgrOrder = IsBlueFirst(dstPixelType);
    switch (dstPixelType) {
        case KvxFormat_RGB8:
        case KvxFormat_BGR8:
            return TrueSenseOutput{false, bgrOrder, !Is8Bit(srcPixelType)};
        case KvxFormat_RGBa8:
        case KvxFormat_BGRa8:
            return TrueSenseOutput{true, bgrOrder, !Is8Bit(srcPixelType)};
        case KvxFormat_RGB10:
        case KvxFormat_RGB12:
        case KvxFormat_RGB14:
        case KvxFormat_RGB16:
        case KvxFormat_BGR10:
        case KvxFormat_BGR12:
        case KvxFormat_BGR14:
        case KvxFormat_BGR16:
            if (Is8Bit(srcPixelType)) return std::nullopt;
            return TrueSenseOutput{false, bgrOrder, false};
        default:
            return std::nullopt;
    }
}

}  // namespace kvx
