#include "KvxTrueSense/TrueSenseOutput.h"

#include <climits>

#include "framework/PixelFormats.h"

namespace kvx {

std::optional<TrueSenseOutput> TrueSenseOutputOf(const _KvxImage& src, const _KvxImage& dst) noexcept {
    // As an int such a step would be negative, which has a meaning of its own to a demosaicer.
    if (src.lineStep > INT_MAX || dst.lineStep > INT_MAX) return std::nullopt;
    const bool bgrOrder = IsBlueFirst(dst.pixelType);
    switch (dst.pixelType) {
        case KvxFormat_RGB8:
        case KvxFormat_BGR8:
            return TrueSenseOutput{{false, bgrOrder}, sizeof(uint8_t)};
        case KvxFormat_RGBa8:
        case KvxFormat_BGRa8:
            return TrueSenseOutput{{true, bgrOrder}, sizeof(uint8_t)};
        case KvxFormat_RGB10:
        case KvxFormat_RGB12:
        case KvxFormat_RGB14:
        case KvxFormat_RGB16:
        case KvxFormat_BGR10:
        case KvxFormat_BGR12:
        case KvxFormat_BGR14:
        case KvxFormat_BGR16:
            if (Is8Bit(src.pixelType)) return std::nullopt;
            return TrueSenseOutput{{false, bgrOrder}, sizeof(uint16_t)};
        default:
            return std::nullopt;
    }
}

TrueSenseCall CallOf(const _KvxImage& src, const _KvxImage& dst, const TrueSenseOutput& output,
                     tagTrueSenseParam* params) noexcept {
    return {.src = src.data,
            .srcSampleSize = Is8Bit(src.pixelType) ? sizeof(uint8_t) : sizeof(uint16_t),
            .roi = {0, 0, src.width, src.height},
            .size = {src.width, src.height},
            .srcLineStep = static_cast<int>(src.lineStep),
            .pixelDepth = static_cast<int>(src.pixelDepth),
            .dst = dst.data,
            .dstSampleSize = output.sampleSize,
            .dstLineStep = static_cast<int>(dst.lineStep),
            .grid = static_cast<unsigned char>(PixelTypeToTruesenseGrid(src.pixelType)),
            .params = params};
}

TrueSenseCall CallOf(const _KvxImage& frame, bool isBytes, const RowExchange& exchange,
                     tagTrueSenseParam* params) noexcept {
    TrueSenseCall call = CallOf(frame, {}, {{}, isBytes ? sizeof(uint8_t) : sizeof(uint16_t)}, params);
    call.srcSampleSize = sizeof(uint16_t);
    call.exchange = &exchange;
    return call;
}

}  // namespace kvx
