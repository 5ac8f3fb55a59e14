// The typed flat functions: their arguments become a job.
#include "KvxBayer/BayerFlat.h"
#include "KvxDemosaicing/KvxBayerFlat.h"

namespace kvx {
namespace {

/** Every typed function: its arguments, then what its name adds to them. */
template <class Source, class Destination>
uint32_t Convert(const Source* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep, int pixelDepth, Destination* pDst,
                 int dstStep, uint8_t bayerPattern, int algType, ChannelOrder order,
                 SlotBytes slot = SlotBytes::AsWritten) noexcept {
    constexpr bool fromWords = sizeof(Source) == 2, toBytes = sizeof(Destination) < sizeof(Source);
    const bool isDepth = pixelDepth == 10 || pixelDepth == 12 || pixelDepth == 14 || pixelDepth == 16;
    if (bayerPattern > static_cast<uint8_t>(BayerPattern::GB) || (fromWords && !isDepth))
        return KvxResult_Of(KvxComponentType_Bayer, KvxResult_InvalidArgument);
    BayerJob job = {.source = pSrc,
                    .sourceStep = srcStep,
                    .size = srcSize,
                    .sampleSize = sizeof(Source),
                    .depth = SignificantBits(static_cast<uint32_t>(pixelDepth), fromWords ? 16 : 8),
                    .pattern = static_cast<BayerPattern>(bayerPattern),
                    .destination = pDst,
                    .destinationStep = dstStep,
                    .destinationSize = {srcRoi.width, srcRoi.height},
                    .order = order,
                    .slot = slot};
    if (toBytes) job.output = {.form = BayerOutput::ShiftedBytes, .shift = pixelDepth - 8};
    return ConvertBayerFlat(job, algType);
}

}  // namespace
}  // namespace kvx

using kvx::ChannelOrder;
using kvx::Convert;
using kvx::SlotBytes;

uint32_t BayerToRGB_8u_C1C3R(const uint8_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep, int pixelDepth,
                             uint8_t* pDst, int dstStep, uint8_t bayerPattern, int algType) noexcept {
    return Convert(pSrc, srcRoi, srcSize, srcStep, pixelDepth, pDst, dstStep, bayerPattern, algType, ChannelOrder::RGB);
}

uint32_t BayerToBGR_8u_C1C3R(const uint8_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep, int pixelDepth,
                             uint8_t* pDst, int dstStep, uint8_t bayerPattern, int algType) noexcept {
    return Convert(pSrc, srcRoi, srcSize, srcStep, pixelDepth, pDst, dstStep, bayerPattern, algType, ChannelOrder::BGR);
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
    return Convert(pSrc, srcRoi, srcSize, srcStep, pixelDepth, pDst, dstStep, bayerPattern, algType, ChannelOrder::RGB);
}

uint32_t BayerToBGR_16u_C1C3R(const uint16_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep, int pixelDepth,
                              uint16_t* pDst, int dstStep, uint8_t bayerPattern, int algType) noexcept {
    return Convert(pSrc, srcRoi, srcSize, srcStep, pixelDepth, pDst, dstStep, bayerPattern, algType, ChannelOrder::BGR);
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
    return Convert(pSrc, srcRoi, srcSize, srcStep, pixelDepth, pDst, dstStep, bayerPattern, algType, ChannelOrder::RGB);
}

uint32_t BayerToBGR_16u8u_C1C3R(const uint16_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep, int pixelDepth,
                                uint8_t* pDst, int dstStep, uint8_t bayerPattern, int algType) noexcept {
    return Convert(pSrc, srcRoi, srcSize, srcStep, pixelDepth, pDst, dstStep, bayerPattern, algType, ChannelOrder::BGR);
}

uint32_t BayerToRGB_16u8u_C1C4R(const uint16_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep, int pixelDepth,
                                uint8_t* pDst, int dstStep, uint8_t bayerPattern, int algType) noexcept {
    return Convert(pSrc, srcRoi, srcSize, srcStep, pixelDepth, pDst, dstStep, bayerPattern, algType, ChannelOrder::RGB,
                   SlotBytes::Four);
}

uint32_t BayerToBGR_16u8u_C1C4R(const uint16_t* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep, int pixelDepth,
                                uint8_t* pDst, int dstStep, uint8_t bayerPattern, int algType) noexcept {
    return Convert(pSrc, srcRoi, srcSize, srcStep, pixelDepth, pDst, dstStep, bayerPattern, algType, ChannelOrder::BGR,
                   SlotBytes::Four);
}
