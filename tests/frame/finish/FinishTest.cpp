#include "KvxFrame/Finish.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <set>

#include "frame/convert/PictureRow.h"
#include "frame/finish/ToneTable.h"
#include "frame/support/TestFrames.h"
#include "support/GuardedBuffer.h"
#include "support/InstructionSets.h"

namespace kvx::frame {
namespace {

using fuzz::Edge, fuzz::GuardedBuffer;

/** Every kind of row, against the rule pixel by pixel; memory next to the row must not be touched. */
TEST(PictureRow, EqualsItsSlowTwinOnEveryInstructionSet) {
    std::mt19937 random(4);
    const PixelMatrix matrix = {1.7F, -0.5F, -0.2F, -0.1F, 1.4F, -0.3F, 0.1F, -0.4F, 1.3F};
    std::vector<uint16_t> table(65536);
    std::array<std::vector<uint16_t>, 3> values;
    const auto check = [&](const PictureStep& step, size_t width, Edge edge) {
        const Format& format = step.destination;
        const GuardedBuffer out(RowBytes(format, static_cast<uint32_t>(width)), edge);
        MakePictureRow(step, {values[0].data(), values[1].data(), values[2].data()}, width, out.Data());
        const size_t bytes = format.bits == 8 ? 1 : 2, channels = SamplesPerPixel(format);
        const bool isBlueFirst = format.order != Order::Rgb && format.order != Order::Rgba;
        for (size_t i = 0; i < width * channels; ++i) {
            const size_t x = i / channels, c = isBlueFirst ? 2 - i % channels : i % channels;
            uint32_t expected = White(format);
            if (i % channels < 3) {
                float value = values[c][x];
                if (step.matrix) {
                    value = matrix[3 * c] * values[0][x];
                    value += matrix[3 * c + 1] * values[1][x];
                    value += matrix[3 * c + 2] * values[2][x];
                    value = std::clamp(value, 0.0F, 65535.0F) + 0.5F;
                }
                const auto word = static_cast<uint16_t>(value);
                expected = step.byteTable   ? step.byteTable[word]
                           : step.wordTable ? step.wordTable[word]
                                            : std::min<uint32_t>(word >> step.shift, White(format));
            }
            const uint8_t* sample = out.Data() + bytes * i;
            ASSERT_EQ(bytes == 1 ? *sample : sample[0] | sample[1] << 8, expected)
                << Name(format) << " " << x << " " << c;
        }
    };
    for (auto& plane : values) {
        plane.resize(1029 + 32);
        for (auto& value : plane) value = static_cast<uint16_t>(random());
    }
    std::vector<uint8_t> bytes(65536);
    for (auto& entry : bytes) entry = static_cast<uint8_t>(random());
    test::ForEachInstructionSet([&] {
        for (const char* name : {"RGB8", "BGR8", "BGRx", "RGBa8", "RGB10", "BGR16", "RGBa16"})
            for (const PixelMatrix* withMatrix : {static_cast<const PixelMatrix*>(nullptr), &matrix})
                for (const size_t width : {1, 2, 6, 33, 512, 1029}) {
                    const Format format = FormatByName(name);
                    for (auto& entry : table) entry = static_cast<uint16_t>(random() & White(format));
                    const Edge edge = width % 2 ? Edge::End : Edge::Begin;
                    PictureStep step{format, withMatrix, 16 - format.bits};
                    if (format.bits == 8) step.shift = 7;  // values above white are limited
                    ASSERT_NO_FATAL_FAILURE(check(step, width, edge));
                    step.shift = 0;
                    if (format.bits == 8)
                        step.byteTable = bytes.data();
                    else
                        step.wordTable = table.data();
                    ASSERT_NO_FATAL_FAILURE(check(step, width, edge));
                }
    });
}

double SrgbCode(double light) {
    return light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
}

/** One scene through both families and mono: levels, black, gains, matrix and curve as they were asked for. */
TEST(Finish, DoesTheSameToEveryFamily) {
    Finish finish;
    finish.gains = {1.5, 1, 2, 1.2};
    finish.matrix = {1.2, -0.1, -0.1, -0.2, 1.3, -0.1, 0, -0.4, 1.4};
    finish.tone = ToneCurve::Srgb;
    const Colour light = {0.3, 0.45, 0.2};
    for (const char* name : {"BayerGB8", "BayerRG12p", "BayerBG16", "SCF1WRWG8", "SCF1WGWB12", "SCF1WBWG14"}) {
        const Format format = FormatByName(name);
        finish.blackLevel = White(format) / 16;
        Colour raw{};
        for (size_t i = 0; i < 3; ++i) raw[i] = light[i] * 15 / 16 + 1.0 / 16;
        TestFrame frame = MakeFlat(format, 24, 16, raw);
        for (const char* destination : {"RGB8", "BGR16", "RGBa8"}) {
            SCOPED_TRACE(std::string(name) + " to " + destination);
            const Format to = FormatByName(destination);
            TestPicture picture(to, 24, 16);
            Options options;
            options.finish = finish;
            Convert(frame.view, picture.View(), options);
            const double balanced[3] = {light[0] * 1.5, light[1], light[2] * 2};
            for (uint32_t channel = 0; channel < 3; ++channel) {
                double value = 0;
                for (size_t i = 0; i < 3; ++i) value += finish.matrix[3 * channel + i] * balanced[i];
                const double share = static_cast<double>(picture.At(7, 9, channel)) / White(to);
                EXPECT_NEAR(share, SrgbCode(value), 3.5 / std::min(White(format), 255u));
            }
        }
    }
}

TEST(ToneTable, HasTheValueNearestToTheCurve) {
    Finish finish;
    finish.table = {0, 16384, 65535};
    const std::pair<ToneCurve, double (*)(double)> curves[] = {
        {ToneCurve::Linear, [](double x) { return x; }},
        {ToneCurve::Srgb, SrgbCode},
        {ToneCurve::Table, [](double x) { return (x < 0.5 ? 32768 * x : 49151 * (2 * x - 1) + 16384) / 65535; }}};
    ToneTable table;
    for (const auto& [tone, curve] : curves)
        for (const uint8_t bits : {uint8_t{8}, uint8_t{10}, uint8_t{16}}) {
            finish.tone = tone;
            table.Forget();
            const uint16_t* entries = table.Curve(finish, bits);
            const double white = (1u << bits) - 1, error = 0.5 + (bits < 16 ? white / 65535 / 2 : 0) + 1e-6;
            for (uint32_t value = 0; value < 65536; ++value)
                ASSERT_NEAR(entries[value], curve(value / 65535.0) * white, error) << int{bits} << " " << value;
        }
    const uint16_t* entries = table.Scaling(4095, 10);
    for (uint32_t value = 0; value < 5000; ++value)
        ASSERT_NEAR(entries[value], std::min(value, 4095u) * 1023.0 / 4095, 0.5) << value;
}

/** White is where it is said to be, and no step before the last one has fewer than sixteen bits. */
TEST(Finish, TakesTheWhiteLevelForWhiteAndKeepsSixteenBits) {
    Options options;
    options.finish.emplace().whiteLevel = 12000;
    options.finish->blackLevel = 600;
    TestFrame ramp = MakeFrame(FormatByName("BayerRG14"), 16384, 4,
                               [](uint32_t, uint32_t column) { return static_cast<uint16_t>(column); });
    TestPicture bytes(FormatByName("RGB8"), 16384, 4), words(FormatByName("RGB16"), 16384, 4);
    Convert(ramp.view, bytes.View(), options);
    for (const auto& [column, expected] : {std::pair{12000u, 255u}, {16380u, 255u}, {6300u, 128u}, {600u, 0u}})
        EXPECT_EQ(bytes.At(1, column, 1), expected) << column;
    options.finish->tone = ToneCurve::Srgb;
    Convert(ramp.view, words.View(), options);
    std::set<uint32_t> values;
    for (uint32_t column = 0; column < 16384; ++column) values.insert(words.At(1, column, 1));
    EXPECT_GT(values.size(), 11000u);
}

/** A cast of known size over noise is found and taken away; clipped tiles and clear sites have no say. */
TEST(MeasureGains, FindsTheCast) {
    for (const char* name : {"BayerGR12", "SCF1WBWG12p", "BayerRG10Packed"})
        for (const WhiteBalance method : {WhiteBalance::GreyWorld, WhiteBalance::WhitePatch, WhiteBalance::Auto}) {
            SCOPED_TRACE(std::string(name) + " " + std::to_string(static_cast<int>(method)));
            const Format format = FormatByName(name);
            const double white = White(format), black = std::round(white / 20);
            std::mt19937 random(9);
            TestFrame frame = MakeFrame(format, 128, 96, [&](uint32_t row, uint32_t column) {
                if (row < 8) return static_cast<uint16_t>(white);
                const char filter = FilterAt(format, row, column);
                const double cast = filter == 'R' ? 0.5 : filter == 'B' ? 0.4 : filter == 'G' ? 0.8 : 3.0;
                const double light = 0.3 + 0.4 * static_cast<double>((row / 8 * 31 + column / 8 * 17) % 16) / 16 +
                                     0.02 * (static_cast<double>(random() % 1000) / 1000 - 0.5);
                return static_cast<uint16_t>(std::min(white, std::round(black + cast * light * (white - black))));
            });
            Finish finish;
            finish.blackLevel = black;
            finish.whiteBalance = method;
            const Gains gains = MeasureGains(frame.view, finish);
            EXPECT_NEAR(gains.red, 1.6, 0.04);
            EXPECT_NEAR(gains.green, 1, 1e-9);
            EXPECT_NEAR(gains.blue, 2, 0.05);
            EXPECT_EQ(gains.pan, gains.green);

            Converter converter(format.family);
            converter.SetFinish(finish);
            TestPicture picture(FormatByName("RGB8"), 128, 96);
            converter.Convert(frame.view, picture.View());
            EXPECT_EQ(converter.LastGains().red, gains.red);
            if (format.family == Family::Bayer) {  // noise in the clear sites is not a cast
                EXPECT_NEAR(picture.At(60, 60, 0), picture.At(60, 60, 2), 6);
            }
        }
    // Nothing to measure: black frames, frames smaller than a tile, mono. Red is clipped from 252 on, the top 1/64.
    for (const WhiteBalance method : {WhiteBalance::GreyWorld, WhiteBalance::WhitePatch}) {
        const auto gainsOf = [method](const char* format, uint32_t side, const Colour& levels) {
            Finish finish;
            finish.whiteBalance = method;
            return MeasureGains(MakeFlat(FormatByName(format), side, side, levels).view, finish);
        };
        EXPECT_EQ(gainsOf("BayerRG8", 8, {0, 0, 0}).red, 1);
        EXPECT_EQ(gainsOf("BayerRG8", 1, {0.5, 0.5, 0.5}).blue, 1);
        EXPECT_EQ(gainsOf("Mono8", 8, {0.5, 0.5, 0.5}).red, 1);
        EXPECT_EQ(gainsOf("BayerRG8", 8, {252.0 / 255, 0.4, 0.4}).green, 1);
        EXPECT_NEAR(gainsOf("BayerRG8", 8, {251.0 / 255, 0.4, 0.4}).green, 251 / 102.0, 0.01);
    }
}

/** Fractions and a level for each filter: a frame with such offsets and ranges is the frame without them. */
TEST(Finish, TakesLevelsOfEachFilter) {
    const Levels black = {6.25, 10.5, 12.75, 20}, white = {250, 200.5, 225, 180};
    for (const char* name : {"BayerGB8", "BayerRG14", "SCF1WBWG12p", "Mono10"}) {
        const Format format = FormatByName(name);
        const double unit = White(format) / 255.0;
        const auto frameOf = [&](const Levels& from, const Levels& to) {
            return MakeFrame(format, 32, 16, [&](uint32_t row, uint32_t column) {
                const char filter = FilterAt(format, row, column);
                const bool isBayer = format.family == Family::Bayer;
                const bool hasRed = FilterAt(format, row, column + 1) == 'R' || filter == 'R';
                const size_t index = filter == 'R'   ? 0
                                     : filter == 'G' ? (isBayer && !hasRed ? 2 : 1)
                                     : filter == 'B' ? (isBayer ? 3 : 2)
                                                     : 3;
                const double light = 0.4 + 0.2 * (filter == 'B') - 0.1 * (filter == 'G');
                const double low = from.ofFilters[index] * unit, high = to.ofFilters[index] * unit;
                return static_cast<uint16_t>(std::lround(low + light * (high - low)));
            });
        };
        Options options;
        Finish& finish = options.finish.emplace();
        TestPicture expected(FormatByName("RGB8"), 32, 16), picture(FormatByName("RGB8"), 32, 16);
        Convert(frameOf(0, 255).view, expected.View(), options);
        for (size_t i = 0; i < 4; ++i) {
            finish.blackLevel.ofFilters[i] = black.ofFilters[i] * unit;
            finish.whiteLevel.ofFilters[i] = white.ofFilters[i] * unit;
        }
        Convert(frameOf(black, white).view, picture.View(), options);
        for (const uint32_t channel : {0u, 1u, 2u})
            EXPECT_NEAR(picture.At(5, 9, channel), expected.At(5, 9, channel), format.bits == 8 ? 1.5 : 1) << name;
    }
}

/** Grey surfaces in a light, next to colours that no light has; without the grey ones the gains are limited. */
TEST(WhiteBalance, AutoIgnoresColoursOfNoLightAndLimitsItsGains) {
    const Format format = FormatByName("BayerRG12");
    const auto scene = [&](uint32_t greyColumns) {
        return MakeFrame(format, 64, 64, [&](uint32_t row, uint32_t column) {
            const char filter = FilterAt(format, row, column);
            if (column < greyColumns) return static_cast<uint16_t>(filter == 'R' ? 800 : filter == 'G' ? 1200 : 480);
            const bool isRed = row < 32;  // else yellow; both brighter than the grey
            return static_cast<uint16_t>(filter == 'R' ? 3000 : filter == 'G' ? (isRed ? 300 : 2800) : 200);
        });
    };
    Converter converter(Family::Bayer);
    converter.SetFinish(Finish::Natural());
    TestPicture picture(FormatByName("RGB8"), 64, 64);
    converter.Convert(scene(8).view, picture.View());
    EXPECT_NEAR(converter.LastGains().red, 1.5, 1e-6);
    EXPECT_NEAR(converter.LastGains().blue, 2.5, 1e-6);
    EXPECT_FALSE(converter.LastGainsLimited());
    converter.Convert(scene(0).view, picture.View());
    const Gains gains = converter.LastGains();
    EXPECT_TRUE(converter.LastGainsLimited());
    EXPECT_NEAR(gains.blue / gains.green, 5, 1e-6);
    EXPECT_EQ(std::min({gains.red, gains.green, gains.blue}), 1);

    const Gains ofGrey = MeasureGainsOfGrey(scene(8).view, {1, 3, 6, 6}, {});
    EXPECT_NEAR(ofGrey.red, 1.5, 1e-6);
    EXPECT_NEAR(ofGrey.blue, 2.5, 1e-6);
    Finish clips;
    clips.whiteLevel = 1200;
    for (const _KvxRect place : {_KvxRect{0, 0, 1, 8}, {60, 60, 8, 8}})
        EXPECT_THROW(MeasureGainsOfGrey(scene(8).view, place, {}), Error);
    EXPECT_THROW(MeasureGainsOfGrey(scene(8).view, {0, 0, 8, 8}, clips), Error);
}

/** The brightest place that is not clipped becomes nearly white, never darker; given exposures multiply. */
TEST(Exposure, UsesTheRangeWithoutClippedPlaces) {
    const auto exposureOf = [](const char* name, double light, uint32_t clippedRows) {
        const Format format = FormatByName(name);
        TestFrame frame = MakeFrame(format, 32, 32, [&](uint32_t row, uint32_t) {
            return static_cast<uint16_t>(row < clippedRows ? White(format) : std::lround(light * White(format)));
        });
        return MeasureExposure(frame.view, {});
    };
    for (const char* name : {"BayerGR12", "SCF1WBWG12", "Mono16"})
        for (const uint32_t clippedRows : {0u, 16u}) {
            EXPECT_NEAR(exposureOf(name, 0.225, clippedRows), 2, 0.01) << name;
            EXPECT_EQ(exposureOf(name, 0.97, clippedRows), 0) << name;
            EXPECT_EQ(exposureOf(name, 0.001, clippedRows), 6) << name;
        }
    EXPECT_EQ(exposureOf("BayerRG8", 1, 32), 0);

    TestFrame frame = MakeFlat(FormatByName("BayerGR12"), 32, 32, {0.225, 0.225, 0.225});
    TestPicture picture(FormatByName("RGB8"), 32, 32);
    for (const auto& [isAuto, ev, expected] : {std::tuple{false, 1.0, 0.45}, {true, 0.0, 0.9}, {true, -1.0, 0.45}}) {
        Finish finish;
        finish.autoExposure = isAuto;
        finish.exposure = ev;
        Converter converter(Family::Bayer);
        converter.SetFinish(finish);
        converter.Convert(frame.view, picture.View());
        EXPECT_NEAR(picture.At(9, 9, 1) / 255.0, expected, 0.003);
        EXPECT_NEAR(converter.LastExposure(), ev + 2 * isAuto, 0.01);
    }
}

TEST(LooksLinear, IsTrueForLightAndNotForDevelopedPictures) {
    const auto looksLinear = [](const Colour& levels) {
        return LooksLinear(MakeFlat(FormatByName("BayerRG12"), 32, 32, levels).view, {});
    };
    EXPECT_TRUE(looksLinear({0.08, 0.08, 0.08}));
    EXPECT_TRUE(looksLinear({0.18, 0.3, 0.15}));
    EXPECT_FALSE(looksLinear({0.2, 0.2, 0.2}));
    EXPECT_FALSE(looksLinear({0.3, 0.5, 0.3}));
}

}  // namespace
}  // namespace kvx::frame
