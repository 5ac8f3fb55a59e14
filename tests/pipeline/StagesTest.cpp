// The stages whose arithmetic is settled, against hand-computed cases and plain forms.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdlib>
#include <functional>

#include "pipeline/GammaCodes.h"
#include "support/PipelineFrame.h"

namespace kvx::test {
namespace {

using Codes = std::vector<uint16_t>;
using Plane = std::vector<int32_t>;

template <class Parameter>
struct SampleCase {
    uint16_t sample;
    Parameter by;
    uint16_t expected;
};

TEST(Samples, DarkFloorGainAndBalance) {
    constexpr SampleCase<int32_t> floors[] = {
        {100, 30, 70},        {30, 100, 0},      {4095, 0, 4095},   {5000, 904, 4095}, {65535, 61440, 4095},
        {65535, 61441, 4094}, {10, -4085, 4095}, {10, -4084, 4094}, {0, INT_MAX, 0},   {5, INT_MIN, 0}};
    for (const auto& [sample, floor, expected] : floors) {
        uint16_t result = 7;
        Succeed(Alg_SubtractDarkFloor(reinterpret_cast<const uint8_t*>(&sample), 1, 1, floor, &result, nullptr));
        EXPECT_EQ(result, expected) << sample << " - " << floor;
    }
    constexpr SampleCase<float> gains[] = {{1000, 1.5F, 1500},  {3, 1.5F, 4},     {3, .333F, 0},   {3, .334F, 1},
                                           {4000, 1.5F, 4095},  {65531, 1, 0},    {65531, -2, 10}, {5, -.001F, 0},
                                           {4095, 1e30F, 4095}, {0, INFINITY, 0}, {9, NAN, 0}};
    for (const auto& [sample, gain, expected] : gains) {
        int16_t samples[] = {int16_t(sample), 1234};
        Succeed(ApplyGlobalGain(samples, 1, gain));
        EXPECT_TRUE(samples[0] == expected && samples[1] == 1234) << sample << " x " << gain;
    }
    constexpr SampleCase<float> balances[] = {{1, .5F, 1},           {1, .49F, 0},     {3000, 1, 3000}, {3000, 2, 4095},
                                              {4095, 1.0001F, 4095}, {100, -1, 0},     {7, 1.5F, 11},   {0, NAN, 0},
                                              {9, INFINITY, 4095},   {9, -INFINITY, 0}};
    for (const auto& [sample, gain, expected] : balances) {
        const uint16_t raw[] = {sample, 0, 0, 0};
        uint16_t q[4];
        Succeed(Alg_WhiteBalance(raw, 2, 2, 1, 1, 1, 1, gain, q, q + 1, q + 2, q + 3, nullptr));
        EXPECT_EQ(q[0], expected) << sample << " x " << gain;
    }
}

constexpr const char* kTiles[4] = {"WGWRGWRWWBWGBWGW", "WBWGBWGWWGWRGWRW", "WRWGRWGWWGWBGWBW", "WGWBGWBWWRWGRWGW"};

TEST(WhiteBalance, DealsTheMosaicOut) {
    for (int pattern = 0; pattern < 4; ++pattern)
        for (const auto& [width, height] : {std::pair{12, 8}, {6, 2}, {7, 5}}) {  // what is odd is left out
            const int w2 = width / 2;
            const Codes raw = Drawn<uint16_t>(size_t(width) * height, 0, 4095, 3);
            std::vector<Codes> quarters(4, Codes(size_t(w2) * (height / 2), 9999)), expected = quarters;
            for (int row = 0; row < height / 2 * 2; ++row)
                for (int column = 0; column < w2 * 2; ++column) {
                    const char kind = kTiles[pattern][row % 4 * 4 + column % 4];
                    const float gain = kind == 'W' ? .9F : kind == 'R' ? 1.3F : kind == 'G' ? 1.1F : 1.7F;
                    const double product = double(float(raw[row * width + column]) * gain) + .5;
                    expected[(kind == 'W' ? 0 : 2) + row % 2][row / 2 * w2 + column / 2] =
                        static_cast<uint16_t>(std::min(product, 4095.));
                }
            Succeed(Alg_WhiteBalance(raw.data(), width, height, pattern, 1.3F, 1.1F, 1.7F, .9F, quarters[0].data(),
                                     quarters[1].data(), quarters[2].data(), quarters[3].data(), nullptr));
            EXPECT_EQ(quarters, expected) << pattern;
        }
}

TEST(NoiseParameter, LiesBetweenTheBreakpoints) {
    constexpr float gains[] = {2, 4, 4, 8, 8}, slopes[] = {10, 20, 30, 50, 60}, intercepts[] = {-1, -2, 5, 7, 9};
    constexpr float cases[][3] = {{1, 10, -1},   {2, 10, -1}, {3, 15, -1.5F},    {4, 20, -2},         {5, 35, 5.5F},
                                  {7, 45, 6.5F}, {8, 60, 9},  {INFINITY, 60, 9}, {-INFINITY, 10, -1}, {NAN, 10, -1}};
    for (const auto& [gain, expectedSlope, expectedIntercept] : cases) {
        float slope = 0, intercept = 0;
        Succeed(Alg_CalculateNoiseParameter(gain, gains, slopes, intercepts, &slope, &intercept, nullptr));
        EXPECT_TRUE(slope == expectedSlope && intercept == expectedIntercept)
            << gain << ": " << slope << " " << intercept;
    }
    constexpr float descending[] = {1, 50, 3, 4, 5};
    float slope = 0, intercept = 0;
    Alg_CalculateNoiseParameter(20, descending, slopes, intercepts, &slope, &intercept, nullptr);
    EXPECT_EQ(slope, 60);
}

TEST(Checksum, RotatesAndJoins) {
    constexpr uint8_t bytes[] = {1, 2, 0xFF};
    EXPECT_EQ(calcHash(bytes, 1, 2, 0x866), 0x219822u);
    EXPECT_EQ(calcHash(bytes, 3, 1, 0x88000000u), 0x40BFu);
    for (const int rows : {0, -1}) EXPECT_EQ(calcHash(nullptr, 3, rows, 0x866), 0x866u);
}

/** A convolution as the books have it, float after float; the border stays. */
Plane Convolved(const Plane& plane, int width, int height, const std::vector<float>& kernel, int direction) {
    Plane result = plane;
    const int taps = int(kernel.size()), radius = taps / 2;
    for (int row = direction == 1 ? radius : 0; row < height - (direction == 1 ? radius : 0); ++row)
        for (int column = direction == 0 ? radius : 0; column < width - (direction == 0 ? radius : 0); ++column) {
            float sum = 0;
            for (int t = -radius; t <= radius; ++t)
                sum += float(plane[direction == 0 ? row * width + column + t : (row + t) * width + column]) *
                       kernel[radius - t];
            result[row * width + column] = int32_t(sum);
        }
    return result;
}

TEST(Convolve1D, IsATrueConvolutionThatLeavesTheBorder) {
    const std::vector<float> kernels[] = {{1, 2, 4}, {.25F, .5F, .25F}, {-.3F, 0, .77F, .1F, 5}, {.5F}};
    for (const auto& [width, height] : {std::pair{9, 7}, {1, 5}, {4, 1}, {2, 3}, {3, 5}})
        for (const auto& kernel : kernels)
            for (const int direction : {0, 1}) {
                Plane plane = Drawn<int32_t>(size_t(width) * height, -70000000, 70000000, 5);
                const Plane expected = Convolved(plane, width, height, kernel, direction);
                Scratch scratch(plane.size() * 4);
                Succeed(
                    Alg_Convolve1D(plane.data(), width, height, kernel.data(), int(kernel.size()), direction, nullptr));
                EXPECT_EQ(plane, expected);
            }
    Plane row = {0, 0, 8, 0, 0};
    Scratch scratch(20);
    Succeed(Alg_Convolve1D(row.data(), 5, 1, kernels[0].data(), 3, 0, nullptr));
    EXPECT_EQ(row, (Plane{0, 8, 16, 32, 0}));
    for (const int direction : {2, -1})
        Succeed(Alg_Convolve1D(row.data(), 5, 1, kernels[0].data(), 3, direction, nullptr));
    for (const int taps : {2, 0, -1})
        EXPECT_EQ(Alg_Convolve1D(row.data(), 5, 1, kernels[0].data(), taps, 0, nullptr), -1);
    constexpr float steep[] = {0, 1e30F, 0};
    EXPECT_EQ(row, (Plane{0, 8, 16, 32, 0}));
    Succeed(Alg_Convolve1D(row.data(), 5, 1, steep, 3, 0, nullptr));
    EXPECT_GT(row[1], 2147000000);
}

TEST(Convolve2D, IsATrueConvolutionThatLeavesTheBorder) {
    constexpr float kernel[] = {1, 2, 3, 4, -5, 6, 7, 8, 9.75F}, none[] = {1, 1};
    Codes plane(25, 0), expected(25, 0);
    plane[12] = 1;
    constexpr uint16_t painted[] = {1, 2, 3, 4, 65531, 6, 7, 8, 9};
    for (size_t i = 0; i < 9; ++i) expected[6 + i / 3 * 5 + i % 3] = painted[i];
    Scratch scratch(50);
    Succeed(Alg_Convolve2D(plane.data(), 5, 5, kernel, 3, 3, nullptr));
    EXPECT_EQ(plane, expected);
    for (const auto& [columns, rows] : {std::pair{2, 1}, {1, 2}, {0, 1}, {1, -1}})
        EXPECT_EQ(Alg_Convolve2D(plane.data(), 5, 5, none, columns, rows, nullptr), -1);
    EXPECT_EQ(plane, expected);
}

/** Each cell reaches the plane of its own colour only; the values are those of the demosaicers' plain forms. */
TEST(UpSampling, EveryPatternNamesTheColoursOfItsCells) {
    constexpr int w2 = 6, h2 = 5;
    constexpr const char* cells[] = {"GRBG", "BGGR", "RGGB", "GBRG"};
    Scratch scratch(16 * w2 * h2, 12 * w2 * h2);
    for (int pattern = 0; pattern < 4; ++pattern)
        for (int cell = 0; cell < w2 * h2; ++cell) {
            Plane low(w2 * h2), out[3] = {Plane(4 * w2 * h2, 1), Plane(4 * w2 * h2, 1), Plane(4 * w2 * h2, 1)};
            low[cell] = 1000 * 65536;
            Succeed(Alg_LowColorDiffUpSample(low.data(), w2, h2, pattern, out[0].data(), out[1].data(), out[2].data(),
                                             nullptr));
            for (int colour = 0; colour < 3; ++colour)
                EXPECT_EQ(std::ranges::count(out[colour], 0) < 4 * w2 * h2,
                          cells[pattern][cell / w2 % 2 * 2 + cell % w2 % 2] == "RGB"[colour]);
        }
}

}  // namespace
}  // namespace kvx::test
