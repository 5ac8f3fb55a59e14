// What must hold of the interpolating demosaicers whatever their arithmetic is.
#include <gtest/gtest.h>

#include <functional>

#include "demosaicers/TrueSenseBayerLike.h"
#include "demosaicers/TrueSenseToRgb.h"

namespace kvx::test {
namespace {

constexpr const char* kTile = "WBWGBWGWWGWRGWRW";

/** A scene gives red, green, blue and pan at any place; plane values of 12 bits. */
struct Scene {
    std::function<int(int row, int column)> red, green, blue, pan;

    int Sample(unsigned grid, int row, int column) const {
        switch (kTile[(row + grid / 4) % 4 * 4 + (column + grid % 4) % 4]) {
            case 'R':
                return red(row, column);
            case 'G':
                return green(row, column);
            case 'B':
                return blue(row, column);
            default:
                return pan(row, column);
        }
    }
};

Scene Flat(int red, int green, int blue, int pan) {
    const auto constant = [](int value) { return [value](int, int) { return value; }; };
    return {constant(red), constant(green), constant(blue), constant(pan)};
}

/** 12-bit samples in, 12-bit planes out: identity matrix, linear tone table. */
template <template <class> class Demosaicer>
std::vector<uint16_t> Convert(const Scene& scene, unsigned grid, int width, int height, int depth = 12,
                              bool horMirrored = false, bool verMirrored = false) {
    std::vector<uint16_t> source;
    for (int row = 0; row < height; ++row)
        for (int column = 0; column < width; ++column) {
            const int r = verMirrored ? height - 1 - row : row, c = horMirrored ? width - 1 - column : column;
            const int sample = scene.Sample(grid, r, c);
            source.push_back(static_cast<uint16_t>(depth <= 12 ? sample >> (12 - depth) : sample << (depth - 12)));
        }
    std::vector<uint16_t> tone(KVX_TONE_TABLE_SIZE), picture(source.size() * 3);
    for (size_t i = 0; i < tone.size(); ++i) tone[i] = static_cast<uint16_t>(i);
    tagTrueSenseParam params;
    TrueSense_DefaultValues(&params);
    params.RG = params.RB = params.GR = params.GB = params.BR = params.BG = 0;
    params.RR = params.GG = params.BB = 1;
    params.toneTable = tone.data();
    params.horMirrored = horMirrored;
    params.verMirrored = verMirrored;
    const _KvxSize size{static_cast<uint32_t>(width), static_cast<uint32_t>(height)};
    const auto demosaicer = std::make_unique<Demosaicer<uint16_t>>();
    EXPECT_EQ(demosaicer->Init(source.data(), {0, 0, size.width, size.height}, size, width * 2, depth, picture.data(),
                               width * 6, static_cast<unsigned char>(grid), &params),
              0);
    EXPECT_EQ(demosaicer->Calculate(), 0);
    if (depth != 12)  // back to the planes' 12 bits
        for (uint16_t& value : picture)
            value = static_cast<uint16_t>(depth < 12 ? value << (12 - depth) : value >> (depth - 12));
    return picture;
}

template <template <class> class Demosaicer>
void ExpectFlatFieldsAreExact(int smallest) {
    constexpr int colours[][4] = {{0, 0, 0, 0},     {4080, 4080, 4080, 4080}, {4080, 0, 0, 1360},
                                  {0, 4080, 16, 0}, {0, 0, 4080, 4080},       {496, 2000, 4064, 1904}};
    for (const auto& [red, green, blue, pan] : colours)
        for (unsigned grid = 0; grid < 16; ++grid)
            for (const int depth : {8, 10, 12, 14})
                for (const int width : {smallest, 9, 32})
                    for (const int height : {smallest, 7, 18}) {
                        const auto picture =
                            Convert<Demosaicer>(Flat(red, green, blue, pan), grid, width, height, depth);
                        for (size_t i = 0; i < picture.size(); i += 3)
                            ASSERT_TRUE(picture[i] == red && picture[i + 1] == green && picture[i + 2] == blue)
                                << "pixel " << i / 3 << " of " << width << "x" << height << ", grid " << grid << ", "
                                << depth << " bits: " << picture[i] << " " << picture[i + 1] << " " << picture[i + 2]
                                << " for " << red << " " << green << " " << blue;
                    }
}

// Below five rows or columns a Bayer-like half mosaic has fewer than three, which the library does not convert.
TEST(TrueSenseProperties, FlatFieldsAreExactEverywhere) {
    ExpectFlatFieldsAreExact<TrueSenseToRgb>(4);
    ExpectFlatFieldsAreExact<TrueSenseBayerLike>(5);
}

TEST(TrueSenseProperties, ARampOfConstantDifferencesIsExactInside) {
    const auto ramp = [](int offset) {
        return [offset](int row, int column) { return 1000 + offset + 12 * row + 20 * column; };
    };
    const Scene scene{ramp(300), ramp(-64), ramp(-500), ramp(0)};
    constexpr int width = 41, height = 37, border = 6;
    for (unsigned grid = 0; grid < 16; ++grid) {
        const auto picture = Convert<TrueSenseToRgb>(scene, grid, width, height);
        for (int row = border; row < height - border; ++row)
            for (int column = border; column < width - border; ++column) {
                const uint16_t* pixel = &picture[3 * static_cast<size_t>(row * width + column)];
                ASSERT_EQ(pixel[0], scene.red(row, column)) << "grid " << grid << " at " << row << ", " << column;
                ASSERT_EQ(pixel[1], scene.green(row, column)) << "grid " << grid << " at " << row << ", " << column;
                ASSERT_EQ(pixel[2], scene.blue(row, column)) << "grid " << grid << " at " << row << ", " << column;
            }
    }
}

int Noise(int seed, int row, int column) {
    unsigned hash = static_cast<unsigned>(seed * 7919 + row * 104729 + column * 1299709);
    hash = (hash ^ (hash >> 15)) * 0x2C1B3C6Du;
    hash = (hash ^ (hash >> 12)) * 0x297A2D39u;
    return static_cast<int>((hash ^ (hash >> 15)) % 4096);
}

Scene NoiseFrom(int firstRow, int firstColumn) {
    const auto plane = [=](int seed) {
        return [=](int row, int column) { return Noise(seed, row + firstRow, column + firstColumn); };
    };
    return {plane(1), plane(2), plane(3), plane(4)};
}

/** A scene cut from a frame at any phase is what the frame shows there, but for the border. */
template <template <class> class Demosaicer>
void ExpectPhasesAgree(int border) {
    constexpr int width = 44, height = 40;
    const auto whole = Convert<Demosaicer>(NoiseFrom(0, 0), 0, width, height);
    for (int grid = 1; grid < 16; ++grid) {
        const int top = grid / 4, left = grid % 4;
        const auto part =
            Convert<Demosaicer>(NoiseFrom(top, left), static_cast<unsigned>(grid), width - left, height - top);
        for (int row = border; row < height - top - border; ++row)
            for (int column = border; column < width - left - border; ++column)
                for (int channel = 0; channel < 3; ++channel)
                    ASSERT_EQ(part[static_cast<size_t>((row * (width - left) + column) * 3 + channel)],
                              whole[static_cast<size_t>(((row + top) * width + column + left) * 3 + channel)])
                        << "grid " << grid << " at " << row << ", " << column;
    }
}

TEST(TrueSenseProperties, EveryPhaseShowsTheSameScene) {
    ExpectPhasesAgree<TrueSenseToRgb>(8);
    ExpectPhasesAgree<TrueSenseBayerLike>(10);
}

/** A scene, mosaicked and then mirrored, comes out as the mirror image of the plain conversion. */
template <template <class> class Demosaicer>
void ExpectMirroredSensorsAgree() {
    constexpr int width = 37, height = 22;
    for (unsigned grid = 0; grid < 16; ++grid) {
        const auto plain = Convert<Demosaicer>(NoiseFrom(0, 0), grid, width, height);
        for (const auto& [hor, ver] : {std::pair{true, false}, {false, true}, {true, true}}) {
            const auto mirrored = Convert<Demosaicer>(NoiseFrom(0, 0), grid, width, height, 12, hor, ver);
            for (int row = 0; row < height; ++row)
                for (int column = 0; column < width; ++column) {
                    const int r = ver ? height - 1 - row : row, c = hor ? width - 1 - column : column;
                    for (int channel = 0; channel < 3; ++channel)
                        ASSERT_EQ(mirrored[static_cast<size_t>((row * width + column) * 3 + channel)],
                                  plain[static_cast<size_t>((r * width + c) * 3 + channel)])
                            << "grid " << grid << (hor ? " hor" : "") << (ver ? " ver" : "");
                }
        }
    }
}

TEST(TrueSenseProperties, MirroredSensorsShowTheMirrorImage) {
    ExpectMirroredSensorsAgree<TrueSenseToRgb>();
    ExpectMirroredSensorsAgree<TrueSenseBayerLike>();
}

}  // namespace
}  // namespace kvx::test
