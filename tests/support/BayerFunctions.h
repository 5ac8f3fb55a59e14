/** Loops over conversions and over the flat functions. */
#pragma once

#include <gtest/gtest.h>

#include "support/BayerFrames.h"

namespace kvx::test {

/** Calls `check(depth, pattern, algorithm, blueFirst)` for all conversions that OpenCV has. */
template <class Check>
void ForEachOpenCvConversion(const Check& check) {
    for (const BayerDepth& depth : kBayerDepths)
        for (int pattern = 0; pattern < 4; ++pattern)
            for (const int algorithm : {0, 2})
                for (const bool blueFirst : {false, true}) {
                    SCOPED_TRACE(testing::Message() << depth.depth << " bits, " << kBayerTiles[pattern]
                                                    << ", algorithm " << algorithm << (blueFirst ? ", BGR" : ", RGB"));
                    ASSERT_NO_FATAL_FAILURE(check(depth, pattern, algorithm, blueFirst));
                }
}

/** In place of a number of channels: the RGBA and BGRA functions. */
constexpr int kAlpha = 5;

// The flat functions: [channels, then kAlpha][blue-first].
constexpr decltype(&BayerToRGB_8u_C1C3R) kFlatBytes[3][2] = {{BayerToRGB_8u_C1C3R, BayerToBGR_8u_C1C3R},
                                                             {BayerToRGB_8u_C1C4R, BayerToBGR_8u_C1C4R},
                                                             {BayerToRGBA_8u_C1C4R, BayerToBGRA_8u_C1C4R}};
constexpr decltype(&BayerToRGB_16u_C1C3R) kFlatWords[2][2] = {{BayerToRGB_16u_C1C3R, BayerToBGR_16u_C1C3R},
                                                              {BayerToRGB_16u_C1C4R, BayerToBGR_16u_C1C4R}};
constexpr decltype(&BayerToRGB_16u8u_C1C3R) kFlatWordsToBytes[3][2] = {
    {BayerToRGB_16u8u_C1C3R, BayerToBGR_16u8u_C1C3R},
    {BayerToRGB_16u8u_C1C4R, BayerToBGR_16u8u_C1C4R},
    {BayerToRGBA_16u8u_C1C4R, BayerToBGRA_16u8u_C1C4R}};

/** The flat function from `srcDepth` to `dstDepth` bits (8 or more) with these channels, on the images' records. */
inline uint32_t CallFlat(int srcDepth, int dstDepth, bool blueFirst, int channels, GuardedImage& src, GuardedImage& dst,
                         int pattern, int algorithm) {
    const _KvxImage& from = src.Record();
    const _KvxImage& to = dst.Record();
    const auto call = [&](auto function, auto* samples, auto* pixels) {
        // The origin of the region is ignored.
        return function(samples, {7, 9, to.width, to.height}, {from.width, from.height},
                        static_cast<int>(from.lineStep), static_cast<int>(from.pixelDepth), pixels,
                        static_cast<int>(to.lineStep), static_cast<uint8_t>(pattern), algorithm);
    };
    const auto* srcBytes = static_cast<const uint8_t*>(from.data);
    auto* dstBytes = static_cast<uint8_t*>(to.data);
    const auto* srcWords = static_cast<const uint16_t*>(from.data);
    auto* dstWords = static_cast<uint16_t*>(to.data);
    if (srcDepth == 8) return call(kFlatBytes[channels - 3][blueFirst], srcBytes, dstBytes);
    if (dstDepth == 8) return call(kFlatWordsToBytes[channels - 3][blueFirst], srcWords, dstBytes);
    return call(kFlatWords[channels - 3][blueFirst], srcWords, dstWords);
}

/** Pixels of three bytes with 255 after each. */
inline std::vector<uint8_t> WithAlpha(const std::vector<uint8_t>& pixels) {
    std::vector<uint8_t> result(pixels.size() / 3 * 4, 255);
    for (size_t i = 0; i < pixels.size(); ++i) result[i / 3 * 4 + i % 3] = pixels[i];
    return result;
}

/** A new component's conversion. */
inline uint32_t CallComponent(GuardedImage& src, GuardedImage& dst, int algorithm) {
    KvxBayer* component = KvxBayer_CreateComponent();
    EXPECT_EQ(KvxComponent_SetParamInt(KvxBayer_GetComponent(component), "BayerAlgType", algorithm), 0u);
    const uint32_t result = KvxBayer_ConvertImage(component, &src.Record(), &dst.Record());
    KvxBayer_DeleteComponent(component);
    return result;
}

}  // namespace kvx::test
