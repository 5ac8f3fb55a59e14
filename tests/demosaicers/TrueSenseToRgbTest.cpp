// The fast interpolator gives the bits of its slow twin, whatever it runs on and however the frame is cut.
#include "demosaicers/TrueSenseToRgb.h"

#include <gtest/gtest.h>

#include "support/InstructionSets.h"
#include "support/TrueSenseJobs.h"

namespace kvx::test {
namespace {

void ExpectSlowResult(const TrueSenseJob& job) {
    SCOPED_TRACE(testing::Message() << job);
    const TrueSenseRun slow(job);
    const auto expected = slow.Expected(SlowInterpolation(slow.Slow()));
    ForEachInstructionSet([&] {
        TrueSenseRun fast(job);
        ASSERT_EQ(fast.Convert<TrueSenseToRgb>(), 0);
        ASSERT_TRUE(fast.Result() == expected);
    });
}

TEST(TrueSenseToRgb, EqualsItsSlowTwinOnEveryGridAndSmallSize) {
    std::mt19937 random(1);
    for (unsigned grid = 0; grid < 16; ++grid)
        for (int width = 1; width <= 13; ++width)
            for (int height = 1; height <= 13; ++height) {
                ExpectSlowResult(DrawJob(width, height, grid, random));
                if (HasFatalFailure()) return;
            }
}

TEST(TrueSenseToRgb, EqualsItsSlowTwinOnLargeFramesInAnyNumberOfThreads) {
    std::mt19937 random(2);
    constexpr struct {
        int width, height;
    } sizes[] = {{64, 300}, {131, 97}, {517, 70}, {1025, 33}, {2051, 9}, {9, 1031}};
    for (const auto& size : sizes)
        for (int draw = 0; draw < 12; ++draw) {
            ExpectSlowResult(DrawJob(size.width, size.height, random() % 16, random));
            if (HasFatalFailure()) return;
        }
}

}  // namespace
}  // namespace kvx::test
