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

void ExpectTable(const auto& table, uint32_t digest) {
    EXPECT_TRUE(std::ranges::is_sorted(table));
    uint32_t hash = 2166136261;  // FNV-1a of the values
    for (const auto value : table) hash = (hash ^ uint32_t(value)) * 16777619;
    EXPECT_EQ(hash, digest);
}

TEST(Tables, ToneScalesAndTheirSecondNamesAreThoseThatCallersKnow) {
    ExpectTable(Tonescale12, 0x237fa8a3);
    ExpectTable(Tonescale12Table12, 0x066b906f);
    EXPECT_EQ(&Gamma10toLinear12Table, &Gamma10toLinear12);
    EXPECT_EQ(&Linear12toGamma10Table, &Linear12toGamma10);
    EXPECT_EQ(&Tonescale12Table, &Tonescale12);
}

}  // namespace
}  // namespace kvx::test
