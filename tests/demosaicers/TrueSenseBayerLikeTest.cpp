// The Bayer-like demosaicer gives the bits of its slow twin, which shares only the image-processing library's calls.
#include "demosaicers/TrueSenseBayerLike.h"

#include <gtest/gtest.h>

#include "support/InstructionSets.h"
#include "support/TrueSenseJobs.h"

namespace kvx::test {
namespace {

void ExpectSlowResult(const TrueSenseJob& job) {
    SCOPED_TRACE(testing::Message() << job);
    const TrueSenseRun slow(job);
    const auto expected = slow.Expected(SlowBayerLike(slow.Slow()));
    ForEachInstructionSet([&] {
        TrueSenseRun fast(job);
        ASSERT_EQ(fast.Convert<TrueSenseBayerLike>(), 0);
        ASSERT_TRUE(fast.Result() == expected);
    });
}

TEST(TrueSenseBayerLike, EqualsItsSlowTwin) {
    std::mt19937 random(3);
    constexpr struct {
        int width, height;
    } sizes[] = {{1, 1}, {2, 7}, {6, 3}, {9, 10}, {13, 13}, {64, 31}, {131, 97}, {1025, 18}, {12, 400}};
    for (unsigned grid = 0; grid < 16; ++grid)
        for (const auto& size : sizes) {
            ExpectSlowResult(DrawJob(size.width, size.height, grid, random));
            if (HasFatalFailure()) return;
        }
}

TEST(TrueSenseBayerLike, WritesOddDepthsSixteenBitsDeep) {
    for (const int depth : {9, 11, 13, 15})
        ExpectSlowResult({.width = 40, .height = 20, .grid = 5, .resultBytes = 2, .depth = depth});
}

}  // namespace
}  // namespace kvx::test
