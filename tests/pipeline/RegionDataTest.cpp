// A part of a plane as text.
#include <gtest/gtest.h>

#include <climits>

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

}  // namespace
}  // namespace kvx::test
