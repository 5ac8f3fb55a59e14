// The pipeline's tables as wholes.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "pipeline/GammaCodes.h"
#include "pipeline/ToneScales.h"

namespace kvx::test {
namespace {

TEST(Tables, GammaCodesFollowTheirCurve) {
    std::vector<double> curve;
    for (int x = 0; x < 4096; ++x) {
        curve.push_back(x <= 256 ? x : 256 + 277.2086918 * std::log((x + 1.5) / 257.5));
        EXPECT_EQ(Linear12toGamma10[size_t(x)], std::lround(curve.back()));
    }
    for (int code = 0; code < 1024; ++code) {
        const auto distance = [=](double value) { return std::abs(value - code); };
        EXPECT_EQ(Gamma10toLinear12[size_t(code)], std::ranges::min_element(curve, {}, distance) - curve.begin());
    }
}

void ExpectTable(const auto& table, uint32_t digest, const std::vector<std::pair<int, int>>& rows) {
    for (const auto& [from, to] : rows) EXPECT_EQ(table[size_t(from)], to) << from;
    EXPECT_TRUE(std::ranges::is_sorted(table));
    uint32_t hash = 2166136261;  // FNV-1a of the values
    for (const auto value : table) hash = (hash ^ uint32_t(value)) * 16777619;
    EXPECT_EQ(hash, digest);
}

TEST(Tables, ToneScalesGoThroughTheRowsThatCallersKnow) {
    ExpectTable(Tonescale12, 0x237fa8a3,
                {{0, 0}, {16, 2}, {64, 21}, {256, 71}, {512, 116}, {1024, 174}, {2048, 228}, {3000, 247}, {4095, 255}});
    ExpectTable(Tonescale12Table12, 0x066b906f,
                {{0, 0}, {1, 5}, {64, 322}, {256, 1140}, {1024, 2795}, {2048, 3648}, {4095, 4095}});
    EXPECT_EQ(&Gamma10toLinear12Table, &Gamma10toLinear12);
    EXPECT_EQ(&Linear12toGamma10Table, &Linear12toGamma10);
    EXPECT_EQ(&Tonescale12Table, &Tonescale12);
}

}  // namespace
}  // namespace kvx::test
