#include "pipeline/ToneScales.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "pipeline/CfaTables.h"
#include "pipeline/GammaCodes.h"

namespace kvx::test {
namespace {

void ExpectRows(const auto& table, const std::vector<std::pair<int, int>>& rows) {
    for (const auto& [from, to] : rows) EXPECT_EQ(table[size_t(from)], to) << from;
    EXPECT_TRUE(std::ranges::is_sorted(table));
}

TEST(Tables, GoThroughTheRowsThatCallersKnow) {
    ExpectRows(Gamma10toLinear12, {{512, 647}, {768, 1631}, {1023, 4095}});
    ExpectRows(Linear12toGamma10, {{1024, 639}, {2048, 831}, {4095, 1023}});
    ExpectRows(Tonescale12,
               {{0, 0}, {16, 2}, {64, 21}, {256, 71}, {512, 116}, {1024, 174}, {2048, 228}, {3000, 247}, {4095, 255}});
    ExpectRows(Tonescale12Table12, {{0, 0}, {1, 5}, {64, 322}, {256, 1140}, {1024, 2795}, {2048, 3648}, {4095, 4095}});
    for (int i = 0; i <= 256; ++i) EXPECT_TRUE(Gamma10toLinear12[i] == i && Linear12toGamma10[i] == i) << i;
    for (int code = 0; code < kGammaCodes; ++code) EXPECT_NEAR(Linear12toGamma10[Gamma10toLinear12[code]], code, 1);
    EXPECT_EQ(&Gamma10toLinear12Table, &Gamma10toLinear12);
    EXPECT_EQ(&Linear12toGamma10Table, &Linear12toGamma10);
    EXPECT_EQ(&Tonescale12Table, &Tonescale12);
}

// A cell of the low-resolution mosaic has the colour of the two colour sites that it covers; sites tell their row.
TEST(CfaTables, SitesAndCellsAgree) {
    for (size_t pattern = 0; pattern < 4; ++pattern)
        for (int row = 0; row < 4; ++row)
            for (int column = 0; column < 4; ++column) {
                const int code = (*s_siteTables[pattern])[row][column];
                const int cell = (*s_cellTables[pattern])[row / 2][column / 2];
                const bool isPan = (row + column) % 2 == 0;
                EXPECT_EQ(code, (isPan ? 3 : 5 + 2 * cell) + row % 2) << pattern << " " << row << " " << column;
            }
}

TEST(Tonescale12Table12, RisesWithoutJumps) {
    for (size_t i = 1; i < Tonescale12Table12.size(); ++i) {
        const int step = Tonescale12Table12[i] - Tonescale12Table12[i - 1];
        EXPECT_TRUE(step >= 0 && step <= 6) << "at " << i << ": " << step;
    }
}

}  // namespace
}  // namespace kvx::test
