#include "KvxFrame/Finish.h"

#include <gtest/gtest.h>

#include <cmath>

#include "frame/convert/PictureRow.h"
#include "frame/finish/BalanceRow.h"
#include "frame/support/TestFrames.h"
#include "support/InstructionSets.h"

namespace kvx::frame {
namespace {

TEST(BalanceRow, EqualsItsFormulaOnEveryInstructionSet) {
    std::mt19937 random(3);
    const RowBalance cases[] = {{4095, 4, 16 * 64, 12, 65535, {65535, 40000, 1, 32768}},
                                {255, 8, 0, 15, 65535, {32768, 65535, 20000, 32769}},
                                {65535, 0, 65534, 0, 65535, {65535, 65535, 1, 0}},
                                {1023, 6, 640, 14, 4095, {17000, 30000, 65535, 16384}},
                                {16383, 2, 0, 17, 4095, {65535, 65535, 65535, 65535}},
                                {65535, 0, 0, 17, 65535, {65535, 65535, 65535, 65535}}};
    std::vector<uint16_t> samples(1003);
    for (auto& sample : samples) sample = static_cast<uint16_t>(random());
    samples[5] = samples[70] = 0;
    samples[6] = samples[71] = 0xFFFF;
    test::ForEachInstructionSet([&] {
        for (const RowBalance& balance : cases) {
            std::vector<uint16_t> result = samples;
            BalanceRow(balance, result.data(), result.size());
            for (size_t i = 0; i < samples.size(); ++i) {
                // The documented formula, in numbers too wide to overflow.
                const int64_t value = std::min<int64_t>(samples[i], balance.white) << balance.leftShift;
                const int64_t light = std::max<int64_t>(value - balance.black, 0);
                const int64_t half = balance.scale > 0 ? int64_t{1} << (balance.scale - 1) : 0;
                const int64_t expected =
                    std::min<int64_t>((light * balance.factors[i % 4] + half) >> balance.scale, balance.limit);
                ASSERT_EQ(result[i], expected) << i;
            }
        }
    });
}

/** Every kind of row: the slow twin goes pixel by pixel. */
TEST(PictureRow, EqualsItsSlowTwinOnEveryInstructionSet) {
    std::mt19937 random(4);
    std::vector<uint16_t> table(65536);
    const PixelMatrix matrix = {1.7F, -0.5F, -0.2F, -0.1F, 1.4F, -0.3F, 0.1F, -0.4F, 1.3F};
    test::ForEachInstructionSet([&] {
        for (const char* name : {"RGB8", "BGR8", "BGRx", "RGB16", "BGR16", "RGBa16"})
            for (const uint32_t channels : {1u, 3u})
                for (const uint32_t sampleBytes : {1u, 2u})
                    for (const bool withMatrix : {false, true})
                        for (const size_t width : {1, 2, 33, 512, 1029}) {
                            const Format format = FormatByName(name);
                            if (withMatrix && sampleBytes == 1) continue;
                            for (auto& entry : table) entry = static_cast<uint16_t>(random() & White(format));
                            std::vector<uint8_t> in(width * channels * sampleBytes);
                            for (auto& byte : in) byte = static_cast<uint8_t>(random());
                            const auto sampleAt = [&](size_t index) {
                                return static_cast<uint16_t>(sampleBytes == 1 ? in[index]
                                                                              : in[2 * index] | in[2 * index + 1] << 8);
                            };
                            const size_t outBytes = RowBytes(format, static_cast<uint32_t>(width));
                            std::vector<uint8_t> out(outBytes + 1, 0x5A);  // at an odd address
                            MakePictureRow(
                                {channels, sampleBytes, format, withMatrix ? &matrix : nullptr, table.data()},
                                in.data(), out.data() + 1, width);
                            ASSERT_EQ(out[0], 0x5A);
                            const bool isBlueFirst = format.order != Order::Rgb && format.order != Order::Rgba;
                            for (size_t x = 0; x < width; ++x) {
                                uint16_t rgb[3];
                                for (size_t c = 0; c < 3; ++c)
                                    rgb[isBlueFirst ? 2 - c : c] = sampleAt(channels == 1 ? x : 3 * x + c);
                                for (size_t c = 0; c < 3; ++c) {
                                    uint16_t value = rgb[c];
                                    if (withMatrix) {
                                        float sum = matrix[3 * c] * static_cast<float>(rgb[0]);
                                        sum += matrix[3 * c + 1] * static_cast<float>(rgb[1]);
                                        sum += matrix[3 * c + 2] * static_cast<float>(rgb[2]);
                                        value = static_cast<uint16_t>(std::clamp(sum, 0.0F, 65535.0F) + 0.5F);
                                    }
                                    const size_t index = x * SamplesPerPixel(format) + (isBlueFirst ? 2 - c : c);
                                    const uint32_t got = format.bits == 8
                                                             ? out[1 + index]
                                                             : out[1 + 2 * index] | out[2 + 2 * index] << 8;
                                    ASSERT_EQ(got, table[value]) << name << " " << x << " " << c;
                                }
                            }
                        }
    });
}

TEST(PictureRow, GrowsInPlace) {
    std::vector<uint8_t> row(4 * 1100), expected(4 * 1100);
    for (size_t i = 0; i < 3 * 1100; ++i) row[i] = static_cast<uint8_t>(i * 7);
    for (size_t x = 0; x < 1100; ++x)
        for (size_t c = 0; c < 4; ++c) expected[4 * x + c] = c == 3 ? 255 : row[3 * x + c];
    MakePictureRow({3, 1, FormatByName("RGBa8"), nullptr, nullptr}, row.data(), row.data(), 1100);
    EXPECT_EQ(row, expected);
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
    const Levels light = {0.3, 0.45, 0.2};
    for (const char* name : {"BayerGB8", "BayerRG12p", "BayerBG16", "SCF1WRWG8", "SCF1WGWB12", "SCF1WBWG14"}) {
        const Format format = FormatByName(name);
        finish.blackLevel = White(format) / 16;
        Levels raw{};
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

TEST(Finish, KeepsSixteenBitsUpToTheLastStep) {
    // A ramp of 16-bit light on its way through the curve has far more than 256 codes.
    const Format format = FormatByName("BayerRG12");
    TestFrame ramp = MakeFrame(format, 512, 4, [](uint32_t, uint32_t column) { return static_cast<uint16_t>(column); });
    TestPicture picture(FormatByName("RGB16"), 512, 4);
    Options options;
    options.finish.emplace();
    options.finish->tone = ToneCurve::Table;
    options.finish->table = {0, 32768, 65535};
    Convert(ramp.view, picture.View(), options);
    uint32_t previous = 0;
    for (uint32_t column = 1; column < 511; ++column) {  // bilinear: the same at each site of a ramp
        const double exact = column * 65535.0 / 4095 * 32768 / 32767.5;
        EXPECT_NEAR(picture.At(1, column, 1), exact, 17) << column;
        EXPECT_GE(picture.At(1, column, 1), previous);
        previous = picture.At(1, column, 1);
    }
}

/** A cast of known size over noise is found and taken away; clipped tiles and clear sites have no say. */
TEST(MeasureGains, FindsTheCast) {
    for (const char* name : {"BayerGR12", "SCF1WBWG12p", "BayerRG10Packed"})
        for (const WhiteBalance method : {WhiteBalance::GreyWorld, WhiteBalance::WhitePatch}) {
            SCOPED_TRACE(std::string(name) + (method == WhiteBalance::GreyWorld ? " grey" : " white"));
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
            finish.blackLevel = static_cast<uint32_t>(black);
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
    // Nothing to go by: black frames, clipped frames, frames smaller than a tile, mono.
    for (const WhiteBalance method : {WhiteBalance::GreyWorld, WhiteBalance::WhitePatch}) {
        Finish finish;
        finish.whiteBalance = method;
        for (const Levels& levels : {Levels{0, 0, 0}, Levels{1, 1, 1}})
            EXPECT_EQ(MeasureGains(MakeFlat(FormatByName("BayerRG8"), 8, 8, levels).view, finish).red, 1);
        EXPECT_EQ(MeasureGains(MakeFlat(FormatByName("BayerRG8"), 1, 1, {0.5, 0.5, 0.5}).view, finish).blue, 1);
        EXPECT_EQ(MeasureGains(MakeFlat(FormatByName("Mono8"), 8, 8, {0.5, 0.5, 0.5}).view, finish).red, 1);
    }
}

TEST(Finish, TakesTheWhiteLevelForWhite) {
    Options options;
    options.finish.emplace();
    options.finish->blackLevel = 600;
    options.finish->whiteLevel = 15520;
    for (const uint16_t sample : std::initializer_list<uint16_t>{15520, 16383, 8060}) {
        TestFrame frame = MakeFrame(FormatByName("BayerRG14"), 8, 8, [&](uint32_t, uint32_t) { return sample; });
        TestPicture picture(FormatByName("RGB8"), 8, 8);
        Convert(frame.view, picture.View(), options);
        EXPECT_EQ(picture.At(3, 3, 1), sample == 8060 ? 128u : 255u) << sample;
    }
}

}  // namespace
}  // namespace kvx::frame
