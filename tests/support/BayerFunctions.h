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

struct FlatBytes {
    using Function = decltype(&BayerToRGB_8u_C1C3R);
    static constexpr Function functions[3][2] = {{BayerToRGB_8u_C1C3R, BayerToBGR_8u_C1C3R},
                                                 {BayerToRGB_8u_C1C4R, BayerToBGR_8u_C1C4R},
                                                 {BayerToRGBA_8u_C1C4R, BayerToBGRA_8u_C1C4R}};
};
struct FlatWords {
    using Function = decltype(&BayerToRGB_16u_C1C3R);
    static constexpr Function functions[2][2] = {{BayerToRGB_16u_C1C3R, BayerToBGR_16u_C1C3R},
                                                 {BayerToRGB_16u_C1C4R, BayerToBGR_16u_C1C4R}};
};
struct FlatWordsToBytes {
    using Function = decltype(&BayerToRGB_16u8u_C1C3R);
    static constexpr Function functions[3][2] = {{BayerToRGB_16u8u_C1C3R, BayerToBGR_16u8u_C1C3R},
                                                 {BayerToRGB_16u8u_C1C4R, BayerToBGR_16u8u_C1C4R},
                                                 {BayerToRGBA_16u8u_C1C4R, BayerToBGRA_16u8u_C1C4R}};
};

template <class Family, class Source, class Destination>
uint32_t CallFamily(bool blueFirst, int channels, const _KvxImage& src, const _KvxImage& dst, int pattern,
                    int algorithm) {
    // The origin of the region is ignored.
    return Family::functions[channels - 3][blueFirst](
        static_cast<const Source*>(src.data), {7, 9, dst.width, dst.height}, {src.width, src.height},
        static_cast<int>(src.lineStep), static_cast<int>(src.pixelDepth), static_cast<Destination*>(dst.data),
        static_cast<int>(dst.lineStep), static_cast<uint8_t>(pattern), algorithm);
}

/** The flat function from `srcDepth` to `dstDepth` bits (8 or more) with these channels, on the images' records. */
inline uint32_t CallFlat(int srcDepth, int dstDepth, bool blueFirst, int channels, GuardedImage& src, GuardedImage& dst,
                         int pattern, int algorithm) {
    const _KvxImage& from = src.Record();
    const _KvxImage& to = dst.Record();
    if (srcDepth == 8)
        return CallFamily<FlatBytes, uint8_t, uint8_t>(blueFirst, channels, from, to, pattern, algorithm);
    if (dstDepth == 8)
        return CallFamily<FlatWordsToBytes, uint16_t, uint8_t>(blueFirst, channels, from, to, pattern, algorithm);
    return CallFamily<FlatWords, uint16_t, uint16_t>(blueFirst, channels, from, to, pattern, algorithm);
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
