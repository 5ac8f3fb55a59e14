// The stages whose arithmetic is the library's own: laws that any good choice keeps, and models that they follow.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>

#include "pipeline/GammaCodes.h"
#include "support/PipelineFrame.h"

namespace kvx::test {
namespace {

using Plane = std::vector<int32_t>;

TEST(ImpulseFilter, ClampsToTheRangeOfNeighboursOfTheSameColour) {
    constexpr int width = 9, height = 8;
    const Plane noise = Drawn<int32_t>(width * height, -9999, 9999, 3);
    for (const int step : {1, 2, 5, 8, INT_MAX}) {
        Plane expected = noise, plane = noise;
        for (int row = 0; row < height; ++row)
            for (int column = 0; column < width; ++column) {
                Plane about;
                for (const int i : {-1, 0, 1})
                    for (const int j : {-1, 0, 1}) {
                        const long r = row + long(i) * step, c = column + long(j) * step;
                        if ((i || j) && r >= 0 && r < height && c >= 0 && c < width)
                            about.push_back(noise[size_t(r * width + c)]);
                    }
                if (about.empty()) continue;
                const auto [least, most] = std::ranges::minmax(about);
                int32_t& value = expected[row * width + column];
                value = std::clamp(value, least, most);
            }
        Scratch scratch(4 * noise.size());
        Succeed(Alg_ImpulseFilter(plane.data(), 5, width, height, step, nullptr));
        EXPECT_EQ(plane, expected) << step;
    }
    char text[64] = {};
    LogText_t log{text, 0};
    Plane plane = noise;
    for (const auto& [columns, step] : {std::pair{0, 2}, {width, 0}, {width, -1}})
        Succeed(Alg_ImpulseFilter(plane.data(), 5, columns, height, step, &log));
    EXPECT_EQ(Alg_ImpulseFilter(plane.data(), 4, width, height, 2, &log), -1);
    EXPECT_STREQ(text, "data type error.\n");
    EXPECT_EQ(plane, noise);
}

TEST(SigmaFilter, IsTheMeanOfWhatLiesWithinTheThreshold) {
    constexpr int width = 40, height = 37, unit = 65536;
    const Plane noise = Drawn<int32_t>(width * height, -300 * unit, 300 * unit, 3);
    Plane thresholds = Drawn<int32_t>(width * height, 0, 1000 * unit, 4);
    for (size_t i = 0; i < thresholds.size(); i += 5) thresholds[i] = i % 2 ? 0 : 1;  // 1: all others are outliers
    for (const int radius : {1, 2, 16, 17, INT_MAX}) {
        const int reach = std::min(radius, 16);
        Plane plane(noise.size(), 7), copy = noise;
        Succeed(Alg_IterativeSigmaFilter(plane.data(), copy.data(), width, height, radius, thresholds.data(), nullptr));
        EXPECT_EQ(plane, copy);
        for (int i = 0; i < width * height; ++i) {
            const int row = i / width, column = i % width, centre = noise[i];
            double sum = 0;
            int count = 0;
            for (int r = std::max(row - reach, 0); r <= std::min(row + reach, height - 1); ++r)
                for (int c = std::max(column - reach, 0); c <= std::min(column + reach, width - 1); ++c) {
                    const int value = noise[r * width + c];
                    if (std::abs(value - centre) <= thresholds[i]) sum += value, ++count;
                }
            const bool isBorder = row == 0 || row == height - 1 || column == 0 || column == width - 1;
            if (thresholds[i] == 0 || (count == 1 && isBorder)) {
                ASSERT_EQ(plane[i], centre) << i;
            } else if (count == 1) {
                const auto [least, most] =
                    std::minmax({noise[i - 1], noise[i + 1], noise[i - width], noise[i + width]});
                ASSERT_EQ(plane[i], std::clamp(centre, least, most)) << i;
            } else {
                ASSERT_NEAR(plane[i], sum / count, 512) << i << " of " << count;  // a 128th of a code
            }
        }
    }
    // What differs by just the threshold counts.
    Plane three = {0, 1024, 512}, threeCopy = three;
    const Plane limits = {512, 512, 512};
    Succeed(Alg_IterativeSigmaFilter(three.data(), threeCopy.data(), 3, 1, 2, limits.data(), nullptr));
    EXPECT_EQ(three, (Plane{256, 768, 512}));
    // Two levels further apart than the threshold stay what they are.
    Plane edge(width * height), copy, wide(edge.size(), 99 * unit);
    for (size_t i = 0; i < edge.size(); ++i) edge[i] = (i % width < 17 ? 100 : 200) * unit;
    copy = edge;
    for (const int radius : {3, 0, -1})
        Succeed(Alg_IterativeSigmaFilter(edge.data(), copy.data(), width, height, radius, wide.data(), nullptr));
    for (size_t i = 0; i < edge.size(); ++i) ASSERT_EQ(edge[i], (i % width < 17 ? 100 : 200) * unit);
}

TEST(NoiseThresholds, FollowTheModelAtTheLocalMean) {
    const auto thresholdAt = [](bool colour, int code, float sigma, float gain, float slope, float intercept) {
        int32_t threshold = -1;
        const int32_t pan = code * 65536;
        const auto level = static_cast<uint16_t>(code);
        colour ? Alg_ColorBuildGammaNoiseThreshold(&level, 1, 1, sigma, gain, slope, intercept, &threshold, nullptr)
               : Alg_PanBuildGammaNoiseThreshold(&pan, 1, 1, sigma, gain, slope, intercept, &threshold, nullptr);
        return threshold;
    };
    for (const bool colour : {false, true})
        for (const int code : {0, 10, 256, 600, 1023})
            for (const float gain : {1.F, 2.5F}) {
                const double linear = Gamma10toLinear12[code], share = colour ? std::sqrt(.5) : .5;
                const double deviation = std::sqrt(1.5 * linear / gain + 20) * gain * share;
                const double slope = linear <= 256 ? 1 : 277.2 / (linear + 1.5);
                const double expected = 1.7 * deviation * slope * 65536;
                EXPECT_NEAR(thresholdAt(colour, code, 1.7F, gain, 1.5F, 20), expected, 1e-4 * expected) << code;
            }
    EXPECT_EQ(thresholdAt(false, 500, 2, .25F, 1.5F, 20), thresholdAt(false, 500, 2, 1, 1.5F, 20));  // not applied
    constexpr struct {
        float sigma, gain, slope, intercept;
        int32_t expected;
    } wild[] = {{2, 1, 0, -25, 0},     {NAN, 1, 1, 1, 0}, {2, NAN, 1, 1, 0},         {2, 1, NAN, 1, 0},
                {-2, 1, 1, 1, 0},      {0, 1, 1, 1, 0},   {1e30F, 1, 1, 1, 1 << 26}, {2, 1, INFINITY, 1, 1 << 26},
                {2, 0, 1, INFINITY, 0}};
    for (const auto& c : wild)
        EXPECT_EQ(thresholdAt(true, 500, c.sigma, c.gain, c.slope, c.intercept), c.expected)
            << c.sigma << " " << c.gain;

    // Inside, the binomial mean of 3x3 codes gives the level; at the border the code itself, within 0 to 1023.
    Plane plane(25, 100 * 65536), thresholds(25), levels(25, 100);
    plane[12] = 900 * 65536, plane[0] = -5 * 65536, plane[4] = 2000 * 65536;
    constexpr std::pair<size_t, int> means[] = {{12, 300}, {7, 200}, {6, (15 * 100 - 5 + 800) / 16},
                                                {22, 100}, {0, 0},   {4, 1023}};
    Alg_PanBuildGammaNoiseThreshold(plane.data(), 5, 5, 2, 1, 1, 1, thresholds.data(), nullptr);
    for (const auto& [at, code] : means) EXPECT_EQ(thresholds[at], thresholdAt(false, code, 2, 1, 1, 1)) << at;
}

}  // namespace
}  // namespace kvx::test
