// The component and the flat functions give the bits of OpenCV's conversion, as samples or shifted into bytes.
// BayerToColor() rounds to bytes: see MosaicRowTest.cpp.
#include <gtest/gtest.h>

#include "support/BayerFrames.h"
#include "support/BayerFunctions.h"

namespace kvx::test {
namespace {

struct Geometry {
    uint32_t width, height;
    size_t srcPadding, dstPadding;  // bytes after each row
    size_t offset;                  // of both buffers, in bytes
};

// Sizes around the 3x3 neighbourhood and around a band of rows; padding that keeps words aligned and that does not.
constexpr Geometry kGeometries[] = {
    {1, 1, 0, 0, 0},   {2, 2, 0, 0, 0},    {1, 7, 3, 1, 0},      {7, 2, 0, 5, 1},     {3, 3, 0, 0, 0},
    {4, 5, 6, 0, 0},   {5, 4, 0, 6, 0},    {7, 3, 1, 3, 0},      {64, 33, 0, 0, 0},   {33, 64, 2, 64, 0},
    {31, 17, 5, 7, 1}, {640, 77, 0, 2, 0}, {641, 191, 14, 1, 0}, {5000, 23, 0, 8, 0}, {3, 1001, 0, 3, 1},
};

/** A row of 3 x width picture bytes, then zeros up to 4 x width or to the end of the step. */
std::vector<uint8_t> InFourByteSlots(const std::vector<uint8_t>& picture, const Geometry& shape, size_t rowBytes) {
    std::vector<uint8_t> rows(rowBytes * shape.height);
    for (size_t row = 0; row < shape.height; ++row)
        std::memcpy(&rows[row * rowBytes], &picture[row * shape.width * 3], shape.width * 3);
    return rows;
}

/** The flat functions to bytes, with alpha and from words: `expected` is the picture. */
void ExpectBytes(const BayerDepth& depth, const Geometry& g, GuardedImage& src, int pattern, int algorithm,
                 bool blueFirst, const std::vector<uint8_t>& expected) {
    const size_t picture = g.width * 3, slots = g.width * 4;
    GuardedImage alpha(0, g.width, g.height, slots, slots + g.dstPadding, g.offset);
    ASSERT_EQ(CallFlat(depth.depth, 8, blueFirst, kAlpha, src, alpha, pattern, algorithm), 0u);
    ASSERT_EQ(alpha.Pixels(), WithAlpha(expected));
    ASSERT_TRUE(alpha.GuardsIntact());
    if (depth.depth == 8) return;
    GuardedImage three(0, g.width, g.height, picture, picture + g.dstPadding, g.offset);
    ASSERT_EQ(CallFlat(depth.depth, 8, blueFirst, 3, src, three, pattern, algorithm), 0u);
    ASSERT_EQ(three.Pixels(), expected);
    ASSERT_TRUE(three.GuardsIntact());
    for (const size_t step : {picture, picture + g.width / 2, slots, slots + 5}) {
        const size_t rowBytes = std::min(step, slots);
        GuardedImage four(0, g.width, g.height, rowBytes, step);
        ASSERT_EQ(CallFlat(depth.depth, 8, blueFirst, 4, src, four, pattern, algorithm), 0u);
        ASSERT_EQ(four.Pixels(), InFourByteSlots(expected, g, rowBytes));
        ASSERT_TRUE(four.GuardsIntact());
    }
}

TEST(BayerConversion, EqualsOpenCvForEveryFormatAndGeometry) {
    unsigned seed = 1;
    ForEachOpenCvConversion([&](const BayerDepth& depth, int pattern, int algorithm, bool blueFirst) {
        for (const Geometry& g : kGeometries) {
            SCOPED_TRACE(testing::Message() << g.width << "x" << g.height << " padded " << g.srcPadding << " and "
                                            << g.dstPadding << " at " << g.offset);
            const auto samples =
                MakeSamples(seed % 3 ? Fill::Noise : Fill::Extremes, g.width, g.height, depth.depth, seed);
            ++seed;
            const cv::Mat converted =
                OpenCvConversion(samples, depth.depth, g.width, g.height, CodeOf(pattern, algorithm, blueFirst));
            const auto expected = BytesOf(converted);
            GuardedImage src =
                MakeSource(depth.patterns[pattern], depth.depth, g.width, g.height, g.srcPadding, samples, g.offset);
            const size_t rowBytes = g.width * 3 * depth.SampleSize();
            GuardedImage byComponent(blueFirst ? depth.bgr : depth.rgb, g.width, g.height, rowBytes,
                                     rowBytes + g.dstPadding, g.offset);
            GuardedImage byFunction = byComponent.Fresh(), byRecords = byComponent.Fresh();
            GuardedImage byOtherName = byComponent.Fresh();  // of four channels, but of equal depths it writes three

            ASSERT_EQ(CallComponent(src, byComponent, algorithm), 0u);
            ASSERT_EQ(CallFlat(depth.depth, depth.depth, blueFirst, 3, src, byFunction, pattern, algorithm), 0u);
            ASSERT_EQ(CallFlat(depth.depth, depth.depth, blueFirst, 4, src, byOtherName, pattern, algorithm), 0u);
            ASSERT_EQ(BayerToColor(&src.Record(), &byRecords.Record(), algorithm), 0u);
            for (GuardedImage* result : {&byComponent, &byFunction, &byOtherName, &byRecords}) {
                ASSERT_EQ(result->Pixels(), expected);
                ASSERT_TRUE(result->GuardsIntact());
            }
            ASSERT_EQ(src.Pixels(), samples);
            const auto bytes = depth.depth == 8 ? expected : Shifted(converted, depth.depth);
            ExpectBytes(depth, g, src, pattern, algorithm, blueFirst, bytes);
            if (algorithm != 0 || depth.depth == 8 || depth.depth > 12) continue;
            GuardedImage reduced(blueFirst ? KvxFormat_BGR8 : KvxFormat_RGB8, g.width, g.height, g.width * 3,
                                 g.width * 3 + g.dstPadding);
            reduced.Record().width = reduced.Record().height = 1;  // only its data and line step count
            src.Record().pixelDepth = 0;                           // the format gives the depth
            ASSERT_EQ(CallComponent(src, reduced, 2), 0u);         // bilinear, whatever is chosen
            ASSERT_EQ(reduced.Pixels(), bytes);
            ASSERT_TRUE(reduced.GuardsIntact());
        }
    });
}

TEST(BayerConversion, OfTheInHouseAlgorithmShiftsOrRoundsItsWords) {
    constexpr Geometry g{53, 31, 3, 7, 1};
    for (const BayerDepth& depth : {kBayerDepths[1], kBayerDepths[2], kBayerDepths[3], kBayerDepths[4]})
        for (const Fill fill : {Fill::Noise, Fill::Extremes}) {
            GuardedImage src = MakeSource(depth.patterns[2], depth.depth, g.width, g.height, g.srcPadding,
                                          MakeSamples(fill, g.width, g.height, depth.depth, 3), g.offset);
            GuardedImage words(depth.rgb, g.width, g.height, g.width * 6, g.width * 6);
            GuardedImage rounded(KvxFormat_RGB8, g.width, g.height, g.width * 3, g.width * 3 + 7);
            ASSERT_EQ(BayerToColor(&src.Record(), &words.Record(), 1), 0u);
            ASSERT_EQ(BayerToColor(&src.Record(), &rounded.Record(), 1), 0u);
            std::vector<uint8_t> shifted, nearest;
            for (const uint16_t word : WordsOf(words.Pixels(), 16)) {
                shifted.push_back(static_cast<uint8_t>(word >> (depth.depth - 8)));
                nearest.push_back(cv::saturate_cast<uint8_t>(word / double(1 << (depth.depth - 8))));
            }
            ExpectBytes(depth, g, src, 2, 1, false, shifted);
            EXPECT_TRUE(rounded.Pixels() == nearest && rounded.GuardsIntact());
        }
}

TEST(BayerConversion, OrderOfDestinationsThatAreNotRgbOrBgr) {
    GuardedImage src = MakeSource(KvxFormat_BayerRG8, 8, 8, 6, 0, MakeSamples(Fill::Noise, 8, 6, 8, 1));
    const std::pair<uint32_t, uint32_t> sameOrder[] = {{KvxFormat_RGBa8, KvxFormat_RGB8},
                                                       {KvxFormat_BGRa8, KvxFormat_BGR8},
                                                       {KvxFormat_Mono8, KvxFormat_RGB8},
                                                       {KvxFormat_YUV422_8, KvxFormat_RGB8}};
    for (const auto& [dstType, plainType] : sameOrder)
        for (const int algorithm : {0, 1, 2}) {
            GuardedImage dst(dstType, 8, 6, 24, 24 + 8), plain(plainType, 8, 6, 24, 24 + 8);  // three bytes per pixel
            ASSERT_EQ(CallComponent(src, dst, algorithm), 0u);
            ASSERT_EQ(CallComponent(src, plain, algorithm), 0u);
            EXPECT_EQ(dst.Pixels(), plain.Pixels()) << std::hex << dstType << ", algorithm " << algorithm;
            EXPECT_TRUE(dst.GuardsIntact());
        }
}

}  // namespace
}  // namespace kvx::test
