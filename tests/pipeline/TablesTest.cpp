#include "pipeline/ToneScales.h"

#include <gtest/gtest.h>

namespace kvx::test {
namespace {

TEST(Tonescale12Table12, GoesThroughTheRowsThatCallersKnow) {
    constexpr struct {
        int linear, display;
    } rows[] = {{0, 0}, {1, 5}, {64, 322}, {256, 1140}, {1024, 2795}, {2048, 3648}, {4095, 4095}};
    for (const auto& [linear, display] : rows) EXPECT_EQ(Tonescale12Table12[linear], display) << linear;
}

TEST(Tonescale12Table12, RisesWithoutJumps) {
    for (size_t i = 1; i < Tonescale12Table12.size(); ++i) {
        const int step = Tonescale12Table12[i] - Tonescale12Table12[i - 1];
        EXPECT_TRUE(step >= 0 && step <= 6) << "at " << i << ": " << step;
    }
}

}  // namespace
}  // namespace kvx::test
