// What the algorithms make of drawn frames: how near they come to the truth, inside and at the border.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "KvxDemosaicing/KvxTrueSenseFlat.h"

namespace kvx::test {
namespace {

constexpr int kWidth = 120, kHeight = 90;

struct Pixel {
    double value[3];  // red, green, blue, of 12 bits
};
using Scene = Pixel (*)(int row, int column);

/** Gradients, a disc, slanted edges and a fine texture, in colour. */
Pixel Drawn(int row, int column) {
    const double wave = 250 * std::sin(0.35 * row + 0.15 * column), x = column - 70, y = row - 40;
    if (x * x + y * y < 700) return {2600 + wave, 900 + 6.0 * row, 700 + wave};
    if (column + 2 * row < 110) return {600 + 10.0 * row, 1500 + wave, 2400 - 8.0 * column};
    return {900 + 9.0 * column, 1700 + wave, 800 + 12.0 * row};
}

Pixel Flat(int, int) {
    return {800, 1000, 600};
}

/** 16-bit samples of 12 bits; clear sites see the mean of the colours. */
std::vector<uint16_t> Mosaic(Scene scene, unsigned grid) {
    const std::string tile = "WBWGBWGWWGWRGWRW";
    std::vector<uint16_t> samples;
    for (int row = 0; row < kHeight; ++row)
        for (int column = 0; column < kWidth; ++column) {
            const Pixel p = scene(row, column);
            const char kind = tile[(row + grid / 4) % 4 * 4 + (column + grid % 4) % 4];
            const double clear = (p.value[0] + p.value[1] + p.value[2]) / 3;
            const double value = kind == 'W' ? clear : p.value[kind == 'R' ? 0 : kind == 'G' ? 1 : 2];
            samples.push_back(static_cast<uint16_t>(std::lround(value)));
        }
    return samples;
}

/** The linear picture, 16-bit samples of 12 bits, that an algorithm makes of a region of the scene's frame. */
std::vector<uint16_t> Converted(Scene scene, int algorithm, unsigned grid, const _KvxRect& region) {
    std::vector<uint16_t> tone;
    for (int i = 0; i < 4096; ++i) tone.push_back(static_cast<uint16_t>(i));
    tagTrueSenseParam params;
    TrueSense_DefaultValues(&params);
    params.RR = params.GG = params.BB = params.highLumaNoise = params.lowLumaNoise = 1;  // detail as it is
    params.RG = params.RB = params.GR = params.GB = params.BR = params.BG = params.maxSharpen = 0;
    params.toneTable = tone.data();
    const std::vector<uint16_t> samples = Mosaic(scene, grid);
    std::vector<uint16_t> picture(3 * region.width * region.height);
    const auto place = static_cast<unsigned char>((grid / 4 + region.y) % 4 * 4 + (grid % 4 + region.x) % 4);
    EXPECT_EQ(TrueSenseToRGB_16u_C1C3R(samples.data(), region, {kWidth, kHeight}, 2 * kWidth, 12, picture.data(),
                                       static_cast<int>(6 * region.width), place, &params, algorithm, true),
              0u);
    return picture;
}

TEST(DenoisedPicture, AFlatFieldIsFlatToTheCorner) {
    for (const int algorithm : {1, 3, 4})
        for (unsigned grid = 0; grid < 16; ++grid)
            for (const _KvxRect& region :
                 {_KvxRect{0, 0, kWidth, kHeight}, _KvxRect{0, 0, 17, 6}, _KvxRect{5, 3, 30, 9}}) {
                const std::vector<uint16_t> picture = Converted(Flat, algorithm, grid, region);
                for (size_t i = 3; i < picture.size(); ++i)
                    ASSERT_EQ(picture[i], picture[i - 3])
                        << "algorithm " << algorithm << ", grid " << grid << ", value " << i;
                for (int channel = 0; channel < 3; ++channel)
                    EXPECT_NEAR(picture[channel], Flat(0, 0).value[channel], 25) << algorithm;  // a step of 8 bits
            }
}

/** Stripes of brightness alone. */
Pixel Striped(int row, int) {
    const double value = 1000 + (row % 4 < 2 ? 64 : -64);
    return {value, value, value};
}

TEST(DenoisedPicture, KeepsAPeriodicTextureOfBrightness) {
    for (const int algorithm : {1, 3, 4}) {
        const std::vector<uint16_t> picture = Converted(Striped, algorithm, 0, {0, 0, kWidth, kHeight});
        double contrast = 0;
        for (int row = 0; row < 88; ++row)
            for (int i = 0; i < 3 * kWidth; ++i)
                contrast += (row % 4 < 2 ? 1 : -1) * picture[row * 3 * kWidth + i] / (64.0 * 3 * kWidth * 88);
        EXPECT_GT(contrast, 0.8) << "algorithm " << algorithm;
    }
}

TEST(Picture, ComesNearTheTruth) {
    for (int algorithm = 0; algorithm < 5; ++algorithm) {  // 32.0 to 32.4 dB inside, 36.6 to 37.2 dB at the border
        double squares[2] = {};
        int counts[2] = {};
        const auto picture = Converted(Drawn, algorithm, 6, {0, 0, kWidth, kHeight});
        for (int i = 0; i < kHeight; ++i)
            for (int j = 0; j < kWidth; ++j) {
                const int isBorder = i < 3 || j < 3 || i >= kHeight - 3 || j >= kWidth - 3;
                for (int channel = 0; channel < 3; ++channel, ++counts[isBorder]) {
                    const double d = picture[3 * (i * kWidth + j) + channel] - Drawn(i, j).value[channel];
                    squares[isBorder] += d * d;
                }
            }
        const auto decibels = [&](int part) { return 10 * std::log10(4095.0 * 4095 * counts[part] / squares[part]); };
        EXPECT_GT(decibels(0), 31) << "algorithm " << algorithm;
        EXPECT_GT(decibels(1), 35.5) << "algorithm " << algorithm << ", border";
    }
}

}  // namespace
}  // namespace kvx::test
