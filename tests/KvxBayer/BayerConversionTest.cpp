// The component and the flat functions give the bits of the library's own conversion of the whole frame.
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

uint32_t ConvertByComponent(GuardedImage& src, GuardedImage& dst, int algorithm) {
    KvxBayer* component = KvxBayer_CreateComponent();
    EXPECT_EQ(KvxComponent_SetParamInt(KvxBayer_GetComponent(component), "BayerAlgType", algorithm), 0u);
    EXPECT_EQ(KvxBayer_AllocData(component, &src.Record(), &dst.Record()), 0u);
    const uint32_t result = KvxBayer_ConvertImage(component, &src.Record(), &dst.Record());
    KvxBayer_DeleteComponent(component);
    return result;
}

TEST(BayerConversion, EqualsTheLibraryForEveryFormatAndGeometry) {
    unsigned seed = 1;
    ForEachLibraryConversion([&](const BayerDepth& depth, int pattern, int algorithm, bool blueFirst) {
        for (const Geometry& g : kGeometries) {
            SCOPED_TRACE(testing::Message() << g.width << "x" << g.height << " padded " << g.srcPadding << " and "
                                            << g.dstPadding << " at " << g.offset);
            const auto samples =
                MakeSamples(seed % 3 ? Fill::Noise : Fill::Extremes, g.width, g.height, depth.depth, seed);
            ++seed;
            const auto expected = BytesOf(
                LibraryConversion(samples, depth.depth, g.width, g.height, CodeOf(pattern, algorithm, blueFirst)));
            GuardedImage src =
                MakeSource(depth.patterns[pattern], depth.depth, g.width, g.height, g.srcPadding, samples, g.offset);
            const size_t rowBytes = g.width * 3 * depth.SampleSize();
            GuardedImage byComponent(blueFirst ? depth.bgr : depth.rgb, g.width, g.height, rowBytes,
                                     rowBytes + g.dstPadding, g.offset);
            GuardedImage byFunction = byComponent.Fresh(), byRecords = byComponent.Fresh();
            GuardedImage byOtherName = byComponent.Fresh();  // of four channels, but of equal depths it writes three

            ASSERT_EQ(ConvertByComponent(src, byComponent, algorithm), 0u);
            ASSERT_EQ(CallFlat(depth.depth, depth.depth, blueFirst, 3, src, byFunction, pattern, algorithm), 0u);
            ASSERT_EQ(CallFlat(depth.depth, depth.depth, blueFirst, 4, src, byOtherName, pattern, algorithm), 0u);
            ASSERT_EQ(BayerToColor(&src.Record(), &byRecords.Record(), algorithm), 0u);
            for (GuardedImage* result : {&byComponent, &byFunction, &byOtherName, &byRecords}) {
                ASSERT_EQ(result->Pixels(), expected);
                ASSERT_TRUE(result->GuardsIntact());
            }
            ASSERT_EQ(src.Pixels(), samples);
        }
    });
}

TEST(BayerConversion, AFormatWithoutBlueFirstOrderIsWrittenRedFirst) {
    const auto samples = MakeSamples(Fill::Noise, 8, 6, 8, 1);
    GuardedImage src = MakeSource(KvxFormat_BayerRG8, 8, 8, 6, 0, samples);
    for (const uint32_t dstType : {KvxFormat_RGBa8, KvxFormat_Mono8, KvxFormat_YUV422_8}) {
        GuardedImage dst(dstType, 8, 6, 24, 24 + 8);  // three bytes a pixel, also for RGBa
        ASSERT_EQ(ConvertByComponent(src, dst, 0), 0u);
        EXPECT_EQ(dst.Pixels(), BytesOf(LibraryConversion(samples, 8, 8, 6, 48)));
        EXPECT_TRUE(dst.GuardsIntact());
    }
}

}  // namespace
}  // namespace kvx::test
