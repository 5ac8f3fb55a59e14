// The typed flat functions: their arguments become a job.
#include "KvxBayer/BayerFlat.h"
#include "KvxDemosaicing/KvxBayerFlat.h"

namespace kvx {
namespace {

/** Every typed function: its arguments, then what its name adds to them. */
template <class Source, class Destination>
uint32_t Convert(const Source* pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep, int pixelDepth, Destination* pDst,
                 int dstStep, uint8_t bayerPattern, int algType, ChannelOrder order, BayerPixel pixel) noexcept {
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
                    .output = {.pixel = pixel}};
    if (toBytes) job.output = {.form = BayerOutput::ShiftedBytes, .shift = pixelDepth - 8, .pixel = pixel};
    return ConvertBayerFlat(job, algType);
}

}  // namespace
}  // namespace kvx

#define KVX_BAYER_FUNCTION(name, Source, Destination, order, pixel)                                              \
    uint32_t name(Source pSrc, _KvxRect srcRoi, _KvxSize srcSize, int srcStep, int pixelDepth, Destination pDst, \
                  int dstStep, uint8_t bayerPattern, int algType) noexcept {                                     \
        return kvx::Convert(pSrc, srcRoi, srcSize, srcStep, pixelDepth, pDst, dstStep, bayerPattern, algType,    \
                            kvx::ChannelOrder::order, kvx::BayerPixel::pixel);                                   \
    }

// C4R of 8u and 16u: three samples per pixel, as in C3R.
KVX_BAYER_FUNCTION(BayerToRGB_8u_C1C3R, const uint8_t*, uint8_t*, RGB, ThreeSamples)
KVX_BAYER_FUNCTION(BayerToBGR_8u_C1C3R, const uint8_t*, uint8_t*, BGR, ThreeSamples)
KVX_BAYER_FUNCTION(BayerToRGB_8u_C1C4R, const uint8_t*, uint8_t*, RGB, ThreeSamples)
KVX_BAYER_FUNCTION(BayerToBGR_8u_C1C4R, const uint8_t*, uint8_t*, BGR, ThreeSamples)
KVX_BAYER_FUNCTION(BayerToRGB_16u_C1C3R, const uint16_t*, uint16_t*, RGB, ThreeSamples)
KVX_BAYER_FUNCTION(BayerToBGR_16u_C1C3R, const uint16_t*, uint16_t*, BGR, ThreeSamples)
KVX_BAYER_FUNCTION(BayerToRGB_16u_C1C4R, const uint16_t*, uint16_t*, RGB, ThreeSamples)
KVX_BAYER_FUNCTION(BayerToBGR_16u_C1C4R, const uint16_t*, uint16_t*, BGR, ThreeSamples)
KVX_BAYER_FUNCTION(BayerToRGB_16u8u_C1C3R, const uint16_t*, uint8_t*, RGB, ThreeSamples)
KVX_BAYER_FUNCTION(BayerToBGR_16u8u_C1C3R, const uint16_t*, uint8_t*, BGR, ThreeSamples)
KVX_BAYER_FUNCTION(BayerToRGB_16u8u_C1C4R, const uint16_t*, uint8_t*, RGB, ThreeThenZeros)
KVX_BAYER_FUNCTION(BayerToBGR_16u8u_C1C4R, const uint16_t*, uint8_t*, BGR, ThreeThenZeros)
KVX_BAYER_FUNCTION(BayerToRGBA_8u_C1C4R, const uint8_t*, uint8_t*, RGB, WithAlpha)
KVX_BAYER_FUNCTION(BayerToBGRA_8u_C1C4R, const uint8_t*, uint8_t*, BGR, WithAlpha)
KVX_BAYER_FUNCTION(BayerToRGBA_16u8u_C1C4R, const uint16_t*, uint8_t*, RGB, WithAlpha)
KVX_BAYER_FUNCTION(BayerToBGRA_16u8u_C1C4R, const uint16_t*, uint8_t*, BGR, WithAlpha)
