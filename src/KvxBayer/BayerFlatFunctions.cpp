// The typed flat functions: arguments become two records, and the records are converted.
#include <iterator>

#include "KvxBayer/BayerFlat.h"

namespace kvx {
namespace {

/** Formats of 16-bit samples; null for a depth that the functions do not take. */
const BayerFormats* WordFormats(int pixelDepth) {
    for (const BayerFormats& formats : kBayerFormats)
        if (formats.depth == pixelDepth && formats.depth != 8) return &formats;
    return nullptr;
}

_KvxImage Record(uint32_t pixelType, int pixelDepth, uint32_t width, uint32_t height, int lineStep, const void* data) {
    _KvxImage image{};
    image.structSize = sizeof image;
    image.structVersion = KVX_IMAGE_VERSION;
    image.pixelType = pixelType;
    image.pixelDepth = static_cast<uint32_t>(pixelDepth);
    image.width = width;
    image.height = height;
    image.lineStep = static_cast<uint32_t>(lineStep);  // a negative step is one past INT_MAX, which is refused
    image.imageSize = image.lineStep * height;
    image.data = const_cast<void*>(data);  // a source record's data is only read
    return image;
}

uint32_t Convert(const BayerFlatArguments& a, const BayerFormats* formats, ChannelOrder order,
                 const BayerOutput& output, SlotBytes slot = SlotBytes::AsWritten) {
    if (!formats || a.bayerPattern >= std::size(formats->sources))
        return KvxResult_Of(KvxComponentType_Bayer, KvxResult_InvalidArgument);
    const uint32_t dstType = order == ChannelOrder::BGR ? formats->bgr : formats->rgb;
    const _KvxImage src =
        Record(formats->sources[a.bayerPattern], a.pixelDepth, a.srcSize.width, a.srcSize.height, a.srcStep, a.pSrc);
    _KvxImage dst = Record(dstType, a.pixelDepth, a.srcRoi.width, a.srcRoi.height, a.dstStep, a.pDst);
    return ConvertBayerFlat(src, dst, a.algType, order, output, slot);
}

uint32_t ToBytes(const BayerFlatArguments& arguments, ChannelOrder order) noexcept {
    return Convert(arguments, &kBayerFormats[0], order, {.form = BayerOutput::Samples});
}

uint32_t ToWords(const BayerFlatArguments& arguments, ChannelOrder order) noexcept {
    return Convert(arguments, WordFormats(arguments.pixelDepth), order, {.form = BayerOutput::Samples});
}

}  // namespace

uint32_t BayerToShiftedBytes(const BayerFlatArguments& arguments, ChannelOrder order, SlotBytes slot) noexcept {
    return Convert(arguments, WordFormats(arguments.pixelDepth), order,
                   {.form = BayerOutput::ShiftedBytes, .shift = arguments.pixelDepth - 8}, slot);
}

}  // namespace kvx

using kvx::BayerToShiftedBytes;
using kvx::ChannelOrder;
using kvx::SlotBytes;
using kvx::ToBytes;
using kvx::ToWords;

uint32_t BayerToRGB_8u_C1C3R(const uint8_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep, int pixelDepth,
                             uint8_t* pDst, int dstStep, uint8_t bayerPattern, int algType) noexcept {
    return ToBytes({pSrc, srcRoi, srcSize, srcStep, pixelDepth, pDst, dstStep, bayerPattern, algType},
                   ChannelOrder::RGB);
}

uint32_t BayerToBGR_8u_C1C3R(const uint8_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep, int pixelDepth,
                             uint8_t* pDst, int dstStep, uint8_t bayerPattern, int algType) noexcept {
    return ToBytes({pSrc, srcRoi, srcSize, srcStep, pixelDepth, pDst, dstStep, bayerPattern, algType},
                   ChannelOrder::BGR);
}

uint32_t BayerToRGB_8u_C1C4R(const uint8_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep, int pixelDepth,
                             uint8_t* pDst, int dstStep, uint8_t bayerPattern, int algType) noexcept {
    return BayerToRGB_8u_C1C3R(pSrc, srcRoi, srcSize, srcStep, pixelDepth, pDst, dstStep, bayerPattern, algType);
}

uint32_t BayerToBGR_8u_C1C4R(const uint8_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep, int pixelDepth,
                             uint8_t* pDst, int dstStep, uint8_t bayerPattern, int algType) noexcept {
    return BayerToBGR_8u_C1C3R(pSrc, srcRoi, srcSize, srcStep, pixelDepth, pDst, dstStep, bayerPattern, algType);
}

uint32_t BayerToRGB_16u_C1C3R(const uint16_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep, int pixelDepth,
                              uint16_t* pDst, int dstStep, uint8_t bayerPattern, int algType) noexcept {
    return ToWords({pSrc, srcRoi, srcSize, srcStep, pixelDepth, pDst, dstStep, bayerPattern, algType},
                   ChannelOrder::RGB);
}

uint32_t BayerToBGR_16u_C1C3R(const uint16_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep, int pixelDepth,
                              uint16_t* pDst, int dstStep, uint8_t bayerPattern, int algType) noexcept {
    return ToWords({pSrc, srcRoi, srcSize, srcStep, pixelDepth, pDst, dstStep, bayerPattern, algType},
                   ChannelOrder::BGR);
}

uint32_t BayerToRGB_16u_C1C4R(const uint16_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep, int pixelDepth,
                              uint16_t* pDst, int dstStep, uint8_t bayerPattern, int algType) noexcept {
    return BayerToRGB_16u_C1C3R(pSrc, srcRoi, srcSize, srcStep, pixelDepth, pDst, dstStep, bayerPattern, algType);
}

uint32_t BayerToBGR_16u_C1C4R(const uint16_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep, int pixelDepth,
                              uint16_t* pDst, int dstStep, uint8_t bayerPattern, int algType) noexcept {
    return BayerToBGR_16u_C1C3R(pSrc, srcRoi, srcSize, srcStep, pixelDepth, pDst, dstStep, bayerPattern, algType);
}

uint32_t BayerToRGB_16u8u_C1C3R(const uint16_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep, int pixelDepth,
                                uint8_t* pDst, int dstStep, uint8_t bayerPattern, int algType) noexcept {
    return BayerToShiftedBytes({pSrc, srcRoi, srcSize, srcStep, pixelDepth, pDst, dstStep, bayerPattern, algType},
                               ChannelOrder::RGB, SlotBytes::AsWritten);
}

uint32_t BayerToBGR_16u8u_C1C3R(const uint16_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep, int pixelDepth,
                                uint8_t* pDst, int dstStep, uint8_t bayerPattern, int algType) noexcept {
    return BayerToShiftedBytes({pSrc, srcRoi, srcSize, srcStep, pixelDepth, pDst, dstStep, bayerPattern, algType},
                               ChannelOrder::BGR, SlotBytes::AsWritten);
}

uint32_t BayerToRGB_16u8u_C1C4R(const uint16_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep, int pixelDepth,
                                uint8_t* pDst, int dstStep, uint8_t bayerPattern, int algType) noexcept {
    return BayerToShiftedBytes({pSrc, srcRoi, srcSize, srcStep, pixelDepth, pDst, dstStep, bayerPattern, algType},
                               ChannelOrder::RGB, SlotBytes::Four);
}

uint32_t BayerToBGR_16u8u_C1C4R(const uint16_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep, int pixelDepth,
                                uint8_t* pDst, int dstStep, uint8_t bayerPattern, int algType) noexcept {
    return BayerToShiftedBytes({pSrc, srcRoi, srcSize, srcStep, pixelDepth, pDst, dstStep, bayerPattern, algType},
                               ChannelOrder::BGR, SlotBytes::Four);
}
