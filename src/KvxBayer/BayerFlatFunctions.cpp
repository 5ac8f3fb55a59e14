// The typed flat functions: arguments become two records, and the records are converted.
#include <iterator>

#include "KvxBayer/BayerFlat.h"
#include "KvxDemosaicing/KvxPixelFormat.h"

namespace kvx {
namespace {

/** The formats of one sample depth. */
struct DepthFormats {
    int depth;
    uint32_t patterns[4];  // by the argument bayerPattern: GR, RG, BG, GB
    uint32_t rgb, bgr;
};
constexpr DepthFormats s_bytes = {8,
                                  {KvxFormat_BayerGR8, KvxFormat_BayerRG8, KvxFormat_BayerBG8, KvxFormat_BayerGB8},
                                  KvxFormat_RGB8,
                                  KvxFormat_BGR8};
constexpr DepthFormats s_words[] = {
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

const DepthFormats* WordFormats(int pixelDepth) {
    for (const DepthFormats& formats : s_words)
        if (formats.depth == pixelDepth) return &formats;
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

uint32_t Convert(const BayerFlatArguments& a, const DepthFormats* formats, ChannelOrder order,
                 const BayerOutput& output, SlotBytes slot = SlotBytes::AsWritten) {
    if (!formats || a.bayerPattern >= std::size(formats->patterns))
        return KvxResult_Of(KvxComponentType_Bayer, KvxResult_InvalidArgument);
    const uint32_t dstType = order == ChannelOrder::BGR ? formats->bgr : formats->rgb;
    const _KvxImage src =
        Record(formats->patterns[a.bayerPattern], a.pixelDepth, a.srcSize.width, a.srcSize.height, a.srcStep, a.pSrc);
    _KvxImage dst = Record(dstType, a.pixelDepth, a.srcRoi.width, a.srcRoi.height, a.dstStep, a.pDst);
    return ConvertBayerFlat(src, dst, a.algType, order, output, slot);
}

uint32_t ToBytes(const BayerFlatArguments& arguments, ChannelOrder order) noexcept {
    return Convert(arguments, &s_bytes, order, {.form = BayerOutput::Samples});
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
