#include "KvxDemosaicing/KvxTrueSenseFlat.h"
#include "KvxTrueSense/TrueSenseOutput.h"
#include "framework/PixelFormats.h"

namespace {

/** The four functions between one pair of sample types, by channels and order. */
template <class Function>
struct FunctionFamily {
    Function rgb, bgr, rgba, bgra;
    Function For(const kvx::PixelLayout& layout) const {
        if (layout.withAlpha) return layout.bgrOrder ? bgra : rgba;
        return layout.bgrOrder ? bgr : rgb;
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
    if (!src || !dst || PixelTypeToTruesenseGrid(src->pixelType) == -1) return invalid;
    const auto output = kvx::TrueSenseOutputOf(*src, *dst);
    if (!output) return invalid;

    const auto convert = [&]<class Source, class Destination>(const auto& family, Source, Destination) {
        const auto call = kvx::CallOf<Source, Destination>(*src, *dst, params);
        return family.For(output->layout)(call.src, call.roi, call.size, call.srcLineStep, call.pixelDepth, call.dst,
                                          call.dstLineStep, call.grid, params, algType, temporary != 0);
    };
    if (kvx::Is8Bit(src->pixelType)) return convert(s_bytes, uint8_t{}, uint8_t{});
    return output->toBytes ? convert(s_wordsToBytes, uint16_t{}, uint8_t{}) : convert(s_words, uint16_t{}, uint16_t{});
}
