// Every compiled instruction set gives the image-processing library's samples, at every width around its vectors.
#include <gtest/gtest.h>

#include "support/BayerFrames.h"
#include "support/InstructionSets.h"

namespace kvx::test {
namespace {

TEST(BilinearWords, EveryInstructionSetEqualsTheLibrary) {
    ForEachInstructionSet([] {
        for (uint32_t width = 3; width < 140; ++width)
            for (const Fill fill : {Fill::Noise, Fill::Extremes})
                for (int pattern = 0; pattern < 4; ++pattern) {
                    constexpr uint32_t height = 5;
                    // 16 bits: sums of four do not fit the lanes.
                    const auto samples = MakeSamples(fill, width, height, 16, width);
                    const cv::Mat library =
                        LibraryConversion(samples, 16, width, height, kBilinearCodes[pattern][width % 2]);
                    const uint32_t blueFirst = width % 2;
                    GuardedImage src =
                        MakeSource(kBayerDepths[4].patterns[pattern], 16, width, height, 2 * (width % 3), samples);

                    GuardedImage words(blueFirst ? KvxFormat_BGR16 : KvxFormat_RGB16, width, height, width * 6,
                                       width * 6 + 2);
                    ASSERT_EQ(BayerToColor(&src.Record(), &words.Record(), 0), 0u);
                    ASSERT_EQ(words.Pixels(), BytesOf(library)) << width;
                    ASSERT_TRUE(words.GuardsIntact()) << width;

                    for (const int depth : {10, 12, 14, 16}) {  // samples beyond the depth saturate
                        src.Record().pixelType = kBayerDepths[depth / 2 - 4].patterns[pattern];
                        GuardedImage bytes(blueFirst ? KvxFormat_BGR8 : KvxFormat_RGB8, width, height, width * 3,
                                           width * 3 + 1);
                        cv::Mat expected;
                        library.convertTo(expected, CV_8U, 1.0 / (1 << (depth - 8)));
                        ASSERT_EQ(BayerToColor(&src.Record(), &bytes.Record(), 0), 0u);
                        ASSERT_EQ(bytes.Pixels(), BytesOf(expected)) << width << ", " << depth << " bits";
                        ASSERT_TRUE(bytes.GuardsIntact()) << width;
                    }
                }
    });
}

}  // namespace
}  // namespace kvx::test
