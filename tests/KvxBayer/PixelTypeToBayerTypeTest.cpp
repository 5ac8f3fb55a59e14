#include <gtest/gtest.h>

#include "support/BayerFrames.h"

namespace kvx::test {
namespace {

TEST(PixelTypeToBayerType, KnowsTheTwentyUnpackedFormatsAndNoOther) {
    for (uint32_t index = 0; index < KVX_PIXEL_FORMAT_COUNT; ++index) {
        const _KvxPixelFormat& format = *KvxPixelFormat_ByIndex(index);
        int known = -1;
        for (const BayerDepth& depth : kBayerDepths)
            for (int pattern = 0; pattern < 4; ++pattern)
                if (depth.patterns[pattern] == format.pixelType) known = pattern;
        for (const int algorithm : {0, 1, 2, 3, -1})
            for (const bool blueFirst : {false, true})
                EXPECT_EQ(PixelTypeToBayerType(format.pixelType, algorithm, blueFirst),
                          known == -1 ? -1 : CodeOf(known, algorithm, blueFirst))
                    << format.name << ", algorithm " << algorithm;
    }
    for (const uint32_t code : {0u, 0x0308010Cu, 0x03080111u, 0xFFFFFFFFu})
        EXPECT_EQ(PixelTypeToBayerType(code, 0, false), -1);
}

}  // namespace
}  // namespace kvx::test
