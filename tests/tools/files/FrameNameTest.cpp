#include "tools/files/FrameName.h"

#include <gtest/gtest.h>

namespace kvx::tool {
namespace {

TEST(FrameName, TakesOnlyUnambiguousSizesAndFormats) {
    struct Case {
        const char* path;
        std::optional<FrameSize> size;
        const char* format;  // empty: none
    };
    const std::vector<Case> cases = {
        {"scene_1920x1200_BayerRG12.raw", FrameSize{1920, 1200}, "BayerRG12"},
        {"BayerGB8-640x480", FrameSize{640, 480}, "BayerGB8"},
        {"dir_9x9_BayerGR8/scene_7x5.raw", FrameSize{7, 5}, ""},
        {"a.640x480.BayerRG12Packed.raw", FrameSize{640, 480}, "BayerRG12Packed"},
        {"a_4x4_SCF1WBWG12p.raw", FrameSize{4, 4}, "SCF1WBWG12p"},
        {"a_TrueSense_BGGR_WBBW_3_10_8x8.raw", FrameSize{8, 8}, "TrueSense_BGGR_WBBW_3_10"},
        {"longest_BayerGR8_BayerGR10p.raw", std::nullopt, "BayerGR10p"},
        {"same_4x4_BayerGR8_4x4_BayerGR8.raw", FrameSize{4, 4}, "BayerGR8"},
        {"two_4x4_of_8x8_BayerGR8_BayerRG8.raw", std::nullopt, ""},
        {"two_4x8_2x8.raw", std::nullopt, ""},
        {"case_bayerrg12_4X4.raw", std::nullopt, ""},
        {"inside_xBayerRG8_BayerRG8x_a4x4_4x4b_4x4x4.raw", std::nullopt, ""},
        {"again_xBayerRG8_BayerRG8.raw", std::nullopt, "BayerRG8"},
        {"zero_0x10_5x0_x5_5x.raw", std::nullopt, ""},
        {"huge_99999999999999999999x1.raw", std::nullopt, ""},
    };
    for (const Case& expected : cases) {
        const FrameName name = ParseFrameName(expected.path);
        EXPECT_EQ(name.size, expected.size) << expected.path;
        EXPECT_EQ(name.format ? frame::Name(*name.format) : "", expected.format) << expected.path;
    }
}

}  // namespace
}  // namespace kvx::tool
