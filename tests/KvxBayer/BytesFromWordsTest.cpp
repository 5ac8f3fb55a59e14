// 10 to 16-bit frames become bytes: shifted by the flat 16u8u functions and the component. BayerToColor() rounds: see
// MosaicRowTest.cpp.
#include <gtest/gtest.h>

#include "support/BayerFrames.h"
#include "support/BayerFunctions.h"

namespace kvx::test {
namespace {

struct Shape {
    uint32_t width, height;
    size_t srcPadding;
};
constexpr Shape kShapes[] = {{1, 1, 0},   {3, 3, 0},   {2, 9, 2},      {9, 2, 0},      {5, 200, 3},  {200, 5, 0},
                             {64, 64, 0}, {33, 31, 4}, {1021, 130, 0}, {130, 1021, 0}, {7, 3000, 0}, {8200, 7, 1}};

std::vector<uint8_t> Shifted(const cv::Mat& words, int shift) {
    std::vector<uint8_t> bytes;
    const auto* samples = words.ptr<uint16_t>();
    for (size_t i = 0; i < words.total() * 3; ++i) bytes.push_back(static_cast<uint8_t>(samples[i] >> shift));
    return bytes;
}

/** A row of 3 x width picture bytes, then zeros up to 4 x width or to the end of the step. */
std::vector<uint8_t> InFourByteSlots(const std::vector<uint8_t>& picture, const Shape& shape, size_t rowBytes) {
    std::vector<uint8_t> rows(rowBytes * shape.height);
    for (size_t row = 0; row < shape.height; ++row)
        std::memcpy(&rows[row * rowBytes], &picture[row * shape.width * 3], shape.width * 3);
    return rows;
}

TEST(BytesFromWords, FlatFunctionsShiftTheWholeFramesConversion) {
    unsigned seed = 1;
    ForEachLibraryConversion([&](const BayerDepth& depth, int pattern, int algorithm, bool blueFirst) {
        if (depth.depth == 8) return;
        for (const Shape& shape : kShapes) {
            SCOPED_TRACE(testing::Message() << shape.width << "x" << shape.height);
            const auto samples = MakeSamples(Fill::Noise, shape.width, shape.height, depth.depth, seed++);
            GuardedImage src =
                MakeSource(depth.patterns[pattern], depth.depth, shape.width, shape.height, shape.srcPadding, samples);
            const auto expected = Shifted(LibraryConversion(samples, depth.depth, shape.width, shape.height,
                                                            CodeOf(pattern, algorithm, blueFirst)),
                                          depth.depth - 8);

            const size_t picture = shape.width * 3;
            GuardedImage three(0, shape.width, shape.height, picture, picture + 9);
            ASSERT_EQ(CallFlat(depth.depth, 8, blueFirst, 3, src, three, pattern, algorithm), 0u);
            ASSERT_EQ(three.Pixels(), expected);
            ASSERT_TRUE(three.GuardsIntact());

            const size_t slots = shape.width * 4;
            for (const size_t step : {picture, picture + shape.width / 2, slots, slots + 5}) {
                const size_t rowBytes = std::min(step, slots);
                GuardedImage four(0, shape.width, shape.height, rowBytes, step);
                ASSERT_EQ(CallFlat(depth.depth, 8, blueFirst, 4, src, four, pattern, algorithm), 0u);
                ASSERT_EQ(four.Pixels(), InFourByteSlots(expected, shape, rowBytes));
                ASSERT_TRUE(four.GuardsIntact());
            }
        }
    });
}

TEST(BytesFromWords, TheComponentShiftsTheBilinearPictureAndKeepsThePadding) {
    KvxBayer* component = KvxBayer_CreateComponent();
    // The edge-aware choice is not heeded here: 10 and 12-bit frames go to the screen bilinear.
    ASSERT_EQ(KvxComponent_SetParamInt(KvxBayer_GetComponent(component), "BayerAlgType", 2), 0u);
    for (const BayerDepth& depth : kBayerDepths) {
        if (depth.depth != 10 && depth.depth != 12) continue;
        for (int pattern = 0; pattern < 4; ++pattern)
            for (const bool blueFirst : {false, true}) {
                const auto samples = MakeSamples(Fill::Extremes, 37, 21, depth.depth, 3);
                GuardedImage src = MakeSource(depth.patterns[pattern], depth.depth, 37, 21, 2, samples);
                src.Record().pixelDepth = 0;  // the format alone tells the depth
                GuardedImage dst(blueFirst ? KvxFormat_BGR8 : KvxFormat_RGB8, 37, 21, 37 * 3, 37 * 5);
                ASSERT_EQ(KvxBayer_ConvertImage(component, &src.Record(), &dst.Record()), 0u);
                EXPECT_EQ(dst.Pixels(),
                          Shifted(LibraryConversion(samples, depth.depth, 37, 21, kBilinearCodes[pattern][blueFirst]),
                                  depth.depth - 8));
                EXPECT_TRUE(dst.GuardsIntact());
            }
    }
    KvxBayer_DeleteComponent(component);
}

}  // namespace
}  // namespace kvx::test
