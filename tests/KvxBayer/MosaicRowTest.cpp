// Every compiled instruction set gives OpenCV's samples, at every width around its vectors.
#include <gtest/gtest.h>

#include "support/BayerFunctions.h"
#include "support/InstructionSets.h"

namespace kvx::test {
namespace {

constexpr uint32_t kHeight = 4;  // an even and an odd row with all their neighbours

/** Noise, or a random mix of zeros and maxima, in all bits of the samples. */
std::vector<uint8_t> WideSamples(size_t sampleSize, uint32_t width) {
    return MakeSamples(width % 3 ? Fill::Noise : Fill::Extremes, width, kHeight, sampleSize == 1 ? 8 : 16, width);
}

void ExpectPicture(GuardedImage& src, uint32_t dstType, size_t dstSampleSize, int algorithm, const cv::Mat& expected) {
    const uint32_t width = src.Record().width;
    GuardedImage dst(dstType, width, kHeight, width * 3 * dstSampleSize, width * 3 * dstSampleSize + 1);
    ASSERT_EQ(BayerToColor(&src.Record(), &dst.Record(), algorithm), 0u);
    ASSERT_EQ(dst.Pixels(), BytesOf(expected));
    ASSERT_TRUE(dst.GuardsIntact());
}

/** Of 16 bits, shifted: the rounded bytes have three samples only. */
void ExpectAlpha(GuardedImage& src, int pattern, int algorithm, const cv::Mat& words) {
    const uint32_t width = src.Record().width;
    GuardedImage dst(0, width, kHeight, width * 4, width * 4 + 1);
    ASSERT_EQ(CallFlat(16, 8, width % 2, kAlpha, src, dst, pattern, algorithm), 0u);
    ASSERT_EQ(dst.Pixels(), WithAlpha(Shifted(words, 16)));
    ASSERT_TRUE(dst.GuardsIntact());
}

TEST(MosaicRow, EveryInstructionSetEqualsOpenCv) {
    ForEachInstructionSet([] {
        for (uint32_t width = 3; width < 140; ++width)
            for (int pattern = 0; pattern < 4; ++pattern)
                for (const int algorithm : {0, 2}) {
                    SCOPED_TRACE(testing::Message()
                                 << "width " << width << ", pattern " << pattern << ", algorithm " << algorithm);
                    const bool blueFirst = width % 2;
                    const int code = CodeOf(pattern, algorithm, blueFirst);

                    const auto bytes = WideSamples(1, width);
                    GuardedImage byteSource =
                        MakeSource(kBayerDepths[0].patterns[pattern], 8, width, kHeight, 3, bytes);
                    ExpectPicture(byteSource, blueFirst ? KvxFormat_BGR8 : KvxFormat_RGB8, 1, algorithm,
                                  OpenCvConversion(bytes, 8, width, kHeight, code));

                    const auto words = WideSamples(2, width);
                    const cv::Mat converted = OpenCvConversion(words, 16, width, kHeight, code);
                    for (const BayerDepth& depth : kBayerDepths) {
                        if (depth.depth == 8) continue;
                        GuardedImage source = MakeSource(depth.patterns[pattern], 16, width, kHeight, 3, words);
                        ExpectPicture(source, blueFirst ? depth.bgr : depth.rgb, 2, algorithm, converted);
                        if (depth.depth == 16) ExpectAlpha(source, pattern, algorithm, converted);
                        cv::Mat rounded;  // samples beyond the depth saturate
                        converted.convertTo(rounded, CV_8U, 1.0 / (1 << (depth.depth - 8)));
                        ExpectPicture(source, blueFirst ? KvxFormat_BGR8 : KvxFormat_RGB8, 1, algorithm, rounded);
                    }
                }
    });
}

}  // namespace
}  // namespace kvx::test
