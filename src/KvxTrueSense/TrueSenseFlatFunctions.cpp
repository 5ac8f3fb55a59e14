// The flat TrueSense functions.
#include "KvxDemosaicing/KvxTrueSenseFlat.h"

#include "KvxTrueSense/FlatConversion.h"
#include "KvxTrueSense/TrueSenseOutput.h"
#include "framework/PixelFormats.h"

uint32_t TrueSenseToRGB_8u_C1C3R(const uint8_t* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth,
                                 uint8_t* dst, int dstLineStep, unsigned char grid, tagTrueSenseParam* params,
                                 int algType, bool temporary) noexcept {
    return kvx::ConvertFlat(
        {src, sizeof *src, roi, size, srcLineStep, pixelDepth, dst, sizeof *dst, dstLineStep, grid, params},
        {false, false}, algType, temporary);
}

uint32_t TrueSenseToBGR_8u_C1C3R(const uint8_t* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth,
                                 uint8_t* dst, int dstLineStep, unsigned char grid, tagTrueSenseParam* params,
                                 int algType, bool temporary) noexcept {
    return kvx::ConvertFlat(
        {src, sizeof *src, roi, size, srcLineStep, pixelDepth, dst, sizeof *dst, dstLineStep, grid, params},
        {false, true}, algType, temporary);
}

uint32_t TrueSenseToRGB_8u_C1C4R(const uint8_t* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth,
                                 uint8_t* dst, int dstLineStep, unsigned char grid, tagTrueSenseParam* params,
                                 int algType, bool temporary) noexcept {
    return kvx::ConvertFlat(
        {src, sizeof *src, roi, size, srcLineStep, pixelDepth, dst, sizeof *dst, dstLineStep, grid, params},
        {true, false}, algType, temporary);
}

uint32_t TrueSenseToBGR_8u_C1C4R(const uint8_t* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth,
                                 uint8_t* dst, int dstLineStep, unsigned char grid, tagTrueSenseParam* params,
                                 int algType, bool temporary) noexcept {
    return kvx::ConvertFlat(
        {src, sizeof *src, roi, size, srcLineStep, pixelDepth, dst, sizeof *dst, dstLineStep, grid, params},
        {true, true}, algType, temporary);
}

uint32_t TrueSenseToRGB_16u8u_C1C3R(const uint16_t* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth,
                                    uint8_t* dst, int dstLineStep, unsigned char grid, tagTrueSenseParam* params,
                                    int algType, bool temporary) noexcept {
    return kvx::ConvertFlat(
        {src, sizeof *src, roi, size, srcLineStep, pixelDepth, dst, sizeof *dst, dstLineStep, grid, params},
        {false, false}, algType, temporary);
}

uint32_t TrueSenseToBGR_16u8u_C1C3R(const uint16_t* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth,
                                    uint8_t* dst, int dstLineStep, unsigned char grid, tagTrueSenseParam* params,
                                    int algType, bool temporary) noexcept {
    return kvx::ConvertFlat(
        {src, sizeof *src, roi, size, srcLineStep, pixelDepth, dst, sizeof *dst, dstLineStep, grid, params},
        {false, true}, algType, temporary);
}

uint32_t TrueSenseToRGB_16u8u_C1C4R(const uint16_t* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth,
                                    uint8_t* dst, int dstLineStep, unsigned char grid, tagTrueSenseParam* params,
                                    int algType, bool temporary) noexcept {
    return kvx::ConvertFlat(
        {src, sizeof *src, roi, size, srcLineStep, pixelDepth, dst, sizeof *dst, dstLineStep, grid, params},
        {true, false}, algType, temporary);
}

uint32_t TrueSenseToBGR_16u8u_C1C4R(const uint16_t* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth,
                                    uint8_t* dst, int dstLineStep, unsigned char grid, tagTrueSenseParam* params,
                                    int algType, bool temporary) noexcept {
    return kvx::ConvertFlat(
        {src, sizeof *src, roi, size, srcLineStep, pixelDepth, dst, sizeof *dst, dstLineStep, grid, params},
        {true, true}, algType, temporary);
}

uint32_t TrueSenseToRGB_16u_C1C3R(const uint16_t* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth,
                                  uint16_t* dst, int dstLineStep, unsigned char grid, tagTrueSenseParam* params,
                                  int algType, bool temporary) noexcept {
    return kvx::ConvertFlat(
        {src, sizeof *src, roi, size, srcLineStep, pixelDepth, dst, sizeof *dst, dstLineStep, grid, params},
        {false, false}, algType, temporary);
}

uint32_t TrueSenseToBGR_16u_C1C3R(const uint16_t* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth,
                                  uint16_t* dst, int dstLineStep, unsigned char grid, tagTrueSenseParam* params,
                                  int algType, bool temporary) noexcept {
    return kvx::ConvertFlat(
        {src, sizeof *src, roi, size, srcLineStep, pixelDepth, dst, sizeof *dst, dstLineStep, grid, params},
        {false, true}, algType, temporary);
}

uint32_t TrueSenseToRGB_16u_C1C4R(const uint16_t* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth,
                                  uint16_t* dst, int dstLineStep, unsigned char grid, tagTrueSenseParam* params,
                                  int algType, bool temporary) noexcept {
    return kvx::ConvertFlat(
        {src, sizeof *src, roi, size, srcLineStep, pixelDepth, dst, sizeof *dst, dstLineStep, grid, params},
        {true, false}, algType, temporary);
}

uint32_t TrueSenseToBGR_16u_C1C4R(const uint16_t* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth,
                                  uint16_t* dst, int dstLineStep, unsigned char grid, tagTrueSenseParam* params,
                                  int algType, bool temporary) noexcept {
    return kvx::ConvertFlat(
        {src, sizeof *src, roi, size, srcLineStep, pixelDepth, dst, sizeof *dst, dstLineStep, grid, params},
        {true, true}, algType, temporary);
}

uint32_t TrueSenseToColor(const _KvxImage* src, _KvxImage* dst, tagTrueSenseParam* params, int algType,
                          unsigned char temporary) noexcept {
    constexpr uint32_t invalid = KvxResult_Of(KvxComponentType_TrueSense, KvxResult_InvalidArgument);
    if (!src || !dst || !kvx::IsTrueSense(src->pixelType)) return invalid;
    const auto output = kvx::TrueSenseOutputOf(*src, *dst);
    if (!output) return invalid;
    return kvx::ConvertFlat(kvx::CallOf(*src, *dst, *output, params), output->layout, algType, temporary != 0);
}
