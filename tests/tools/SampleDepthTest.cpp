#include "tools/SampleDepth.h"

#include <gtest/gtest.h>

#include "ExpectToolError.h"

namespace kvx::tool {
namespace {

RawFrame FrameOf(const char* format, const std::vector<uint16_t>& samples) {
    return {&RequireFormat(format), cv::Mat(samples, true).reshape(1, 1)};
}

TEST(SampleDepth, LargestSampleOfEachDepthPassesAndTheNextDoesNot) {
    for (const auto& [format, largest] :
         {std::pair<const char*, uint16_t>{"BayerGR10", 1023}, {"BayerRG12", 4095}, {"BayerGB14", 16383}}) {
        EXPECT_NO_THROW(CheckSampleDepth(FrameOf(format, {0, largest, 5}), "f")) << format;
        const RawFrame tooLarge = FrameOf(format, {0, static_cast<uint16_t>(largest + 1), 5});
        ExpectToolError(ExitCode::Frame,
                        fmt::format("largest sample is {}, but {} ends at {}", largest + 1, format, largest),
                        [&] { CheckSampleDepth(tooLarge, "f"); });
    }
    EXPECT_NO_THROW(CheckSampleDepth(FrameOf("BayerBG16", {0, 65535}), "f"));
}

TEST(SampleDepth, TellsTheLikelyCause) {
    struct Case {
        const char* format;
        std::vector<uint16_t> samples;
        const char* cause;
    };
    const std::vector<Case> cases = {
        {"BayerRG12", {0xFFF0, 0x1230, 0x0010}, "left-aligned: shift them right by 4 bits"},
        {"BayerRG10", {0xFFC0, 0x0040}, "left-aligned: shift them right by 6 bits"},
        {"BayerRG12", {0xFF0F, 0x3402, 0x0100}, "big-endian"},
        {"BayerRG12", {0x1FFF, 3}, "try --format BayerRG14"},
        {"BayerGB10", {0xFFFF, 3}, "try --format BayerGB16"},
        {"BayerGB10", {0x0FFF, 3}, "try --format BayerGB12"},
    };
    for (const Case& wrong : cases) {
        ExpectToolError(ExitCode::Frame, wrong.cause,
                        [&] { CheckSampleDepth(FrameOf(wrong.format, wrong.samples), "f"); });
    }
}

}  // namespace
}  // namespace kvx::tool
