// What stages say of themselves in the log.
#include <gtest/gtest.h>

#include <climits>
#include <functional>

#include "support/PipelineFrame.h"

namespace kvx::test {
namespace {

TEST(RegionData, PrintsEveryTypeAndRefusesTheRest) {
    const std::vector<uint16_t> words = {1, 2, 3, 4, 5, 6, 7, 65535, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18};
    const auto* bytes = reinterpret_cast<const uint8_t*>(words.data());
    const int32_t values[] = {1, 2, 3, 4, INT_MIN, 6, 7, 8, 9};
    const auto print = [](const void* data, int type, int x, int y, int columns, int rows, int width, int height) {
        char text[256] = {};
        LogText_t log{text, 0};
        const int result = Alg_GetRegionData("p", data, type, x, y, columns, rows, width, height, &log);
        EXPECT_EQ(log.length, std::string(text).size());
        return std::to_string(result) + text;
    };
    EXPECT_EQ(print(bytes, 0, 1, 0, 2, 1, 3, 3), "0p:\n[[02]]\n\n");
    EXPECT_EQ(print(words.data(), 1, 1, 1, 2, 2, 3, 3), "0p:\n[[56]\n [655359]]\n\n");
    EXPECT_EQ(print(words.data(), 2, 1, 1, 3, 2, 4, 3), "0p:\n[[6 7 -1]\n [10 11 12]]\n\n");
    EXPECT_EQ(print(values, 5, 0, 1, 2, 1, 3, 3), "0p:\n[[4-2147483648]]\n\n");
    EXPECT_EQ(print(words.data(), 4, 1, 0, 2, 2, 3, 3), "0p:\n[[4 5 6  [7 65535 9]]\n\n[[13 14 15  [16 17 18]]\n\n\n");
    EXPECT_EQ(print(bytes, 3, 0, 0, 1, 1, 2, 2), "0p:\n[[1 0 2]]\n\n\n");
    EXPECT_EQ(print(bytes, 0, 0, 0, INT_MIN, INT_MIN, 3, 3), "0p:\n\n");
    for (const int type : {6, -1}) EXPECT_EQ(print(bytes, type, 0, 0, 1, 1, 3, 3), "-1p:\ndata type error.\n");
    constexpr int outside[][4] = {{0, 0, 3, 1},  {0, 0, 1, 3},  {2, 0, 2, 1},      {0, 2, 1, 2},
                                  {-1, 0, 1, 1}, {0, -1, 1, 1}, {INT_MAX, 0, 2, 1}};
    for (const auto& [x, y, columns, rows] : outside)
        EXPECT_EQ(print(bytes, 0, x, y, columns, rows, 3, 3), "-1region position error.\n");
}

// A byte too few, and the stage says which buffer it has no memory for.
TEST(Scratch, EveryStageSaysWhatItHasNoMemoryFor) {
    constexpr int width = 12, height = 8, w2 = 6, h2 = 4, n = width * height, l = w2 * h2;
    std::vector<uint16_t> q(n, 5), pan(n, 5), tone(4096, 5);
    std::vector<int32_t> low(n, 5), full[3] = {low, low, low};
    std::vector<uint8_t> rgb(3 * n);
    constexpr float five[5] = {1, 2, 3, 4, 5}, kernel[9] = {};
    using Stage = std::function<int32_t(LogText_t*)>;
    const Stage interpolate = [&](auto* log) {
        return Alg_InterpolatePan(q.data(), q.data(), width, height, pan.data(), q.data() + l, q.data() + 2 * l, log);
    };
    const Stage generate = [&](auto* log) {
        return Alg_GenerateLow(pan.data(), q.data(), q.data(), q.data(), q.data(), width, height, low.data(), q.data(),
                               full[0].data(), log);
    };
    const Stage cleanColour = [&](auto* log) {
        return Alg_LowColorDiffClean(q.data(), low.data(), w2, h2, 1, 1, 1, 1, 1, five, five, five, 1, 1, 1, 1, 1, 1,
                                     log);
    };
    const Stage cleanPan = [&](auto* log) {
        return Alg_LowPanClean(low.data(), w2, h2, 1, 1, five, five, five, 1, 1, 1, 1, 1, 1, log);
    };
    const Stage spread = [&](auto* log) {
        return Alg_LowColorDiffUpSample(low.data(), w2, h2, 0, full[0].data(), full[1].data(), full[2].data(), log);
    };
    const Stage enlarge = [&](auto* log) { return Alg_LowPanUpSample(low.data(), w2, h2, full[0].data(), log); };
    const Stage sharpen = [&](auto* log) {
        return Alg_Sharpness(rgb.data(), pan.data(), full[0].data(), width, height, 1, 1, 1, 1, tone.data(), log);
    };
    const Stage convolve = [&](auto* log) { return Alg_Convolve1D(low.data(), w2, h2, kernel, 3, 7, log); };
    const Stage convolve2 = [&](auto* log) { return Alg_Convolve2D(q.data(), w2, h2, kernel, 3, 3, log); };
    const struct {
        const Stage& stage;
        size_t bytes;  // the least that do not fail for this reason
        std::string what;
        bool isLast = true;  // what is enough for everything
    } cases[] = {{interpolate, 2 * n, "panCodes"},
                 {generate, 4 * l, "impulsePlane"},
                 {cleanColour, l, "phaseDiff", false},
                 {cleanColour, 2 * l, "reflDiff", false},
                 {cleanColour, 3 * l, "thresAddr", false},
                 {cleanColour, 3 * l + l / 2, "phaseColor"},
                 {cleanPan, 4 * l, "reflPan", false},
                 {cleanPan, 8 * l, "thresAddr"},
                 {spread, 16 * l, "pBuf"},
                 {enlarge, 16 * l, "pBuf"},
                 {sharpen, 4 * n, "pBuf"},
                 {convolve, 4 * l, "pBuf"},
                 {convolve2, 2 * l, "pBuf"}};
    for (const auto& c : cases)
        for (const size_t missing : {0, 1}) {
            char text[256] = {};
            LogText_t log{text, 0};
            Scratch scratch(c.bytes - missing, 4 * n, 4 * n);
            const int32_t result = c.stage(&log);
            if (!missing && !c.isLast) continue;
            EXPECT_EQ(result, missing ? -1 : 0) << c.what;
            EXPECT_EQ(text, missing ? c.what + " memory alloc error.\n" : "");
            EXPECT_EQ(log.length, std::string(text).size());
        }
    for (const Stage* stage : {&spread, &sharpen}) {
        char text[256] = {};
        LogText_t log{text, 0};
        Scratch scratch(4 * n);
        EXPECT_EQ((*stage)(&log), -1);
        EXPECT_STREQ(text, "g_dynamicBuffer1 memory alloc error.\n");
    }
    EXPECT_EQ(cleanPan(nullptr), -1);  // no arena at all, and no log
}

}  // namespace
}  // namespace kvx::test
