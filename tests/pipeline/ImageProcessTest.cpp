// The pipeline as a whole: sizes, order of its stages, refusals, messages, threads.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <functional>

#include "pipeline/ToneScales.h"
#include "support/StagePlanes.h"

namespace kvx::test {
namespace {

TEST(ImageProcess, AnswersHowMuchMemoryAFrameTakes) {
    constexpr int cases[][3] = {{4, 4, 384},
                                {6, 2, 288},
                                {5, 3, 325},
                                {64, 36, 55296},
                                {0, 4, 0},
                                {4, -4, 0},
                                {-4, -4, 0},
                                {INT_MIN, INT_MIN, 0},
                                {40000, 40000, -1},
                                {INT_MAX, INT_MAX, -1},
                                {10000, 8946, 2147040000}};
    for (const auto& [width, height, total] : cases) {
        ImageProcessParam param{};
        param.width = width;
        param.height = height;
        ImageProcessMemory memory{};
        memory.mode = 1;
        ASSERT_EQ(Api_ImageProcess(&param, &memory), total) << width << "x" << height;
        if (total < 0) continue;
        const uint32_t n = total ? uint32_t(width) * height : 0, l = total ? uint32_t(width / 2) * (height / 2) : 0;
        const uint32_t sizes[] = {memory.workSize,  memory.stagingSize, memory.lowPanSize, memory.full0Size,
                                  memory.full1Size, memory.full2Size,   memory.panSize};
        const uint32_t expected[] = {2 * n + 12 * l, 3 * n + 4 * l, 4 * l, 4 * n, 4 * n, 4 * n, 2 * n};
        EXPECT_TRUE(std::ranges::equal(sizes, expected)) << width << "x" << height;
    }
}

/** The stages, each with buffers of its own, and a plain form of the last two. */
std::vector<uint8_t> StageByStage(const PipelineFrame& frame) {
    const ImageProcessParam& p = frame.param;
    const uint16_t* tone = p.toneScale ? p.toneScale : Tonescale12.data();
    const std::vector<int> pixels = StagePlanes(frame.input, p, true, true)
                                        .Finished(p, {[=](int linear) { return uint8_t(tone[linear]); },
                                                      [=](int linear) { return int16_t(tone[linear]); }, 255, 0, 1});
    return {pixels.begin(), pixels.end()};
}

struct Variation {
    const char* what;
    std::function<void(ImageProcessParam&)> vary;
};
const Variation kVariations[] = {
    {"defaults", [](auto&) {}},
    {"pattern 0, balances, gain below 1",
     [](auto& p) { p.cfaPattern = 0, p.globalGain = p.redBalance = .75F, p.blueBalance = 2.2F, p.panBalance = .5F; }},
    {"pattern 2, dark floor, gain",
     [](auto& p) { p.cfaPattern = 2, p.darkFloor = 1700, p.globalGain = 1.7F, p.greenBalance = 1.5F; }},
    {"pattern 3, negative floor, own tone",
     [](auto& p) { p.cfaPattern = 3, p.darkFloor = -1700, p.toneScale = Tonescale12Table12.data(); }},
};

// The driver's buffers overlap; those of the stages do not. Wild parameters are the fuzzer's and
// PipelineTwinsTest.cpp's.
TEST(ImageProcess, GivesWhatItsStagesGiveAndStaysWithinItsBuffers) {
    constexpr struct { int width, height; } sizes[] = {{2, 2}, {4, 4}, {8, 4}, {6, 10}, {2, 12}, {96, 80}};
    for (const auto& [width, height] : sizes)
        for (const Variation& variation : kVariations)
            for (const size_t guard : {0, 64}) {
                SCOPED_TRACE(testing::Message() << width << "x" << height << " " << variation.what);
                PipelineFrame frame(width, height, unsigned(width), guard);
                variation.vary(frame.param);
                const std::vector<uint8_t> expected = StageByStage(frame);
                ASSERT_EQ(frame.Run(), 0);
                ASSERT_EQ(frame.Output(), expected);
                ASSERT_TRUE(frame.GuardsIntact());
            }
}

TEST(ImageProcess, TheLogBeginsAnewAndEndsWithTheChecksum) {
    PipelineFrame frame(8, 4);
    for (int call = 0; call < 2; ++call) {
        ASSERT_EQ(frame.Run(), 0);
        uint32_t hash = 0x866;
        for (const uint8_t byte : frame.Output()) hash = (hash << 5 | hash >> 27) ^ byte;
        char expected[64];
        std::snprintf(expected, sizeof expected, "Final image check num: %x\n", hash);
        EXPECT_STREQ(frame.log, expected);
        frame.input[0] ^= 0xFFF;
    }
    EXPECT_EQ(frame.param.toneScale, Tonescale12.data());  // written back
    frame.param.log = nullptr;
    EXPECT_EQ(frame.Run(), 0);
}

TEST(ImageProcess, FailuresAreExplainedAndLeaveTheOutput) {
    const struct {
        const char* what;
        int32_t result;
        const char* message;
        std::function<void(PipelineFrame&)> spoil;
    } cases[] = {
        {"pattern 4", -1, "CFA pattern error.\n", [](auto& f) { f.param.cfaPattern = 4; }},
        {"pattern -1", -1, "CFA pattern error.\n", [](auto& f) { f.param.cfaPattern = -1; }},
        {"odd width", -1, "image size error.\n", [](auto& f) { f.param.width = 7; }},
        {"odd height", -1, "image size error.\n", [](auto& f) { f.param.height = 3; }},
        {"one row", -1, "image size error.\n", [](auto& f) { f.param.height = 1; }},
        {"huge", -1, "image size error.\n", [](auto& f) { f.param.width = f.param.height = INT_MAX - 1; }},
        {"no columns", 0, "", [](auto& f) { f.param.width = 0; }},
        {"negative rows", 0, "", [](auto& f) { f.param.height = INT_MIN; }},
        {"null input", -1, "", [](auto& f) { f.param.input = nullptr; }},
        {"null output", -1, "", [](auto& f) { f.param.output = nullptr; }},
    };
    for (const auto& c : cases) {
        PipelineFrame frame(8, 4);
        frame.log[0] = '?';  // of an earlier call
        c.spoil(frame);
        EXPECT_EQ(frame.Run(), c.result) << c.what;
        EXPECT_STREQ(frame.log, c.message) << c.what;
        EXPECT_TRUE(frame.OutputIsUntouched() && frame.GuardsIntact()) << c.what;
    }
    using Memory = ImageProcessMemory;
    for (const auto buffer : {&Memory::work, &Memory::staging, &Memory::lowPan, &Memory::full0, &Memory::full1,
                              &Memory::full2, &Memory::pan}) {
        PipelineFrame frame(8, 4);
        frame.memory.*buffer = nullptr;
        EXPECT_EQ(frame.Run(), -1);
        EXPECT_TRUE(frame.OutputIsUntouched() && frame.log[0] == 0);
    }
    PipelineFrame frame(8, 4);
    EXPECT_EQ(Api_ImageProcess(&frame.param, nullptr), -1);
    EXPECT_EQ(Api_ImageProcess(nullptr, &frame.memory), -1);
    EXPECT_STREQ(frame.log, "");
}

}  // namespace
}  // namespace kvx::test
