// The flat TrueSense functions.
#include "KvxDemosaicing/KvxTrueSenseFlat.h"

#include "KvxTrueSense/FlatConversion.h"
#include "KvxTrueSense/TrueSenseOutput.h"
#include "framework/PixelFormats.h"

#define KVX_TRUESENSE_FUNCTION(name, Source, Destination, withAlpha, bgrOrder)                                   \
    uint32_t name(Source src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth, Destination dst,     \
                  int dstLineStep, unsigned char grid, tagTrueSenseParam* params, int algType,                   \
                  bool temporary) noexcept {                                                                     \
        return kvx::ConvertFlat(                                                                                 \
            {src, sizeof *src, roi, size, srcLineStep, pixelDepth, dst, sizeof *dst, dstLineStep, grid, params}, \
            {withAlpha, bgrOrder}, algType, temporary);                                                          \
    }

KVX_TRUESENSE_FUNCTION(TrueSenseToRGB_8u_C1C3R, const uint8_t*, uint8_t*, false, false)
KVX_TRUESENSE_FUNCTION(TrueSenseToBGR_8u_C1C3R, const uint8_t*, uint8_t*, false, true)
KVX_TRUESENSE_FUNCTION(TrueSenseToRGB_8u_C1C4R, const uint8_t*, uint8_t*, true, false)
KVX_TRUESENSE_FUNCTION(TrueSenseToBGR_8u_C1C4R, const uint8_t*, uint8_t*, true, true)
KVX_TRUESENSE_FUNCTION(TrueSenseToRGB_16u8u_C1C3R, const uint16_t*, uint8_t*, false, false)
KVX_TRUESENSE_FUNCTION(TrueSenseToBGR_16u8u_C1C3R, const uint16_t*, uint8_t*, false, true)
KVX_TRUESENSE_FUNCTION(TrueSenseToRGB_16u8u_C1C4R, const uint16_t*, uint8_t*, true, false)
KVX_TRUESENSE_FUNCTION(TrueSenseToBGR_16u8u_C1C4R, const uint16_t*, uint8_t*, true, true)
KVX_TRUESENSE_FUNCTION(TrueSenseToRGB_16u_C1C3R, const uint16_t*, uint16_t*, false, false)
KVX_TRUESENSE_FUNCTION(TrueSenseToBGR_16u_C1C3R, const uint16_t*, uint16_t*, false, true)
KVX_TRUESENSE_FUNCTION(TrueSenseToRGB_16u_C1C4R, const uint16_t*, uint16_t*, true, false)
KVX_TRUESENSE_FUNCTION(TrueSenseToBGR_16u_C1C4R, const uint16_t*, uint16_t*, true, true)

uint32_t TrueSenseToColor(const _KvxImage* src, _KvxImage* dst, tagTrueSenseParam* params, int algType,
                          unsigned char temporary) noexcept {
    constexpr uint32_t invalid = KvxResult_Of(KvxComponentType_TrueSense, KvxResult_InvalidArgument);
    if (!src || !dst || !kvx::IsTrueSense(src->pixelType)) return invalid;
    const auto output = kvx::TrueSenseOutputOf(*src, *dst);
    if (!output) return invalid;
    return kvx::ConvertFlat(kvx::CallOf(*src, *dst, *output, params), output->layout, algType, temporary != 0);
}
