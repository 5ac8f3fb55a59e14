// The interpolating demosaicers give the bits of their slow twins, whatever they run on and however the frame is cut.
#include <gtest/gtest.h>

#include "demosaicers/interpolation/TrueSenseBayerLike.h"
#include "demosaicers/interpolation/TrueSenseToRgb.h"
#include "support/InstructionSets.h"
#include "support/TrueSenseJobs.h"

namespace kvx::test {
namespace {

constexpr std::pair<int, int> kLargeSizes[] = {{64, 300}, {131, 97}, {517, 70}, {1025, 33}, {2051, 9}, {9, 1031}};

template <template <class> class Demosaicer>
void ExpectSlowResult(const TrueSenseJob& job, SlowPicture (*slowly)(const SlowSource&)) {
    SCOPED_TRACE(testing::Message() << job);
    const TrueSenseRun slow(job);
    const auto expected = slow.Expected(slowly(slow.Slow()));
    ForEachInstructionSet([&] {
        TrueSenseRun fast(job);
        ASSERT_EQ(fast.Convert<Demosaicer>(), 0);
        ASSERT_TRUE(fast.Result() == expected);
    });
}

TEST(TrueSenseToRgb, EqualsItsSlowTwin) {
    std::mt19937 random(1);
    const auto expectSlowResult = [&](int width, int height, unsigned grid) {
        ExpectSlowResult<TrueSenseToRgb>(DrawJob(width, height, grid, random), SlowInterpolation);
    };
    for (unsigned grid = 0; grid < 16 && !HasFatalFailure(); ++grid)
        for (int width = 1; width <= 13; ++width)
            for (int height = 1; height <= 13; ++height) expectSlowResult(width, height, grid);
    for (const auto& [width, height] : kLargeSizes)
        for (int draw = 0; draw < 12 && !HasFatalFailure(); ++draw) expectSlowResult(width, height, random() % 16);
}

// The twin shares the image-processing library's calls.
TEST(TrueSenseBayerLike, EqualsItsSlowTwin) {
    std::mt19937 random(3);
    constexpr std::pair<int, int> sizes[] = {{1, 1},   {2, 7},    {6, 3},     {9, 10},  {13, 13},
                                             {64, 31}, {131, 97}, {1025, 18}, {12, 400}};
    for (unsigned grid = 0; grid < 16 && !HasFatalFailure(); ++grid)
        for (const auto& [width, height] : sizes)
            ExpectSlowResult<TrueSenseBayerLike>(DrawJob(width, height, grid, random), SlowBayerLike);
    for (const int depth : {9, 11, 13, 15})  // written sixteen bits deep
        ExpectSlowResult<TrueSenseBayerLike>({.width = 40, .height = 20, .grid = 5, .resultBytes = 2, .depth = depth},
                                             SlowBayerLike);
}

}  // namespace
}  // namespace kvx::test
