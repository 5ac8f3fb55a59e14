#include <climits>

#include "KvxDemosaicing/KvxTrueSenseFlat.h"
#include "KvxTrueSense/TrueSenseOutput.h"
#include "framework/PixelFormats.h"

namespace {

/** The four functions between one pair of sample types, by channels and order. */
template <class Function>
struct FunctionFamily {
    Function rgb, bgr, rgba, bgra;
    Function For(const kvx::TrueSenseOutput& output) const {
        if (output.withAlpha) return output.bgrOrder ? bgra : rgba;
        return output.bgrOrder ? bgr : rgb;
    }
};

constexpr FunctionFamily<decltype(&TrueSenseToRGB_8u_C1C3R)> s_bytes = {
    TrueSenseToRGB_8u_C1C3R, TrueSenseToBGR_8u_C1C3R, TrueSenseToRGB_8u_C1C4R, TrueSenseToBGR_8u_C1C4R};
constexpr FunctionFamily<decltype(&TrueSenseToRGB_16u8u_C1C3R)> s_wordsToBytes = {
    TrueSenseToRGB_16u8u_C1C3R, TrueSenseToBGR_16u8u_C1C3R, TrueSenseToRGB_16u8u_C1C4R, TrueSenseToBGR_16u8u_C1C4R};
constexpr FunctionFamily<decltype(&TrueSenseToRGB_16u_C1C3R)> s_words = {
    TrueSenseToRGB_16u_C1C3R, TrueSenseToBGR_16u_C1C3R, TrueSenseToRGB_16u_C1C4R, TrueSenseToBGR_16u_C1C4R};

}  // namespace

uint32_t TrueSenseToColor(const _KvxImage* src, _KvxImage* dst, tagTrueSenseParam* params, int algType,
                          unsigned char temporary) noexcept {
    constexpr uint32_t invalid = KvxResult_Of(KvxComponentType_TrueSense, KvxResult_InvalidArgument);
    if (!src || !dst) return invalid;
    const int grid = PixelTypeToTruesenseGrid(src->pixelType);
    const auto output = kvx::TrueSenseOutputOf(src->pixelType, dst->pixelType);
    // As an int such a step would be negative, which has a meaning of its own to the typed functions.
    if (grid == -1 || !output || src->lineStep > INT_MAX || dst->lineStep > INT_MAX) return invalid;

    const auto convert = [&](const auto& family, auto* from, auto* to) {
        return family.For(*output)(from, {0, 0, src->width, src->height}, {src->width, src->height},
                                   static_cast<int>(src->lineStep), static_cast<int>(src->pixelDepth), to,
                                   static_cast<int>(dst->lineStep), static_cast<unsigned char>(grid), params, algType,
                                   temporary != 0);
    };
    if (kvx::Is8Bit(src->pixelType))
        return convert(s_bytes, static_cast<uint8_t*>(src->data), static_cast<uint8_t*>(dst->data));
    if (output->toBytes)
        return convert(s_wordsToBytes, static_cast<uint16_t*>(src->data), static_cast<uint8_t*>(dst->data));
    return convert(s_words, static_cast<uint16_t*>(src->data), static_cast<uint16_t*>(dst->data));
}
