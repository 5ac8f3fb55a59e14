#include <gtest/gtest.h>

#include <random>

#include "frame/camera/CorrectionRow.h"
#include "frame/camera/MosaicCorrection.h"
#include "frame/camera/OutlierRow.h"
#include "frame/support/Refusals.h"
#include "frame/support/TestFrames.h"
#include "support/InstructionSets.h"

namespace kvx::frame {
namespace {

using Words = std::vector<uint16_t>;

/** Random words, with extremes. */
Words RandomWords(size_t count, std::mt19937& random) {
    Words words(count);
    for (uint16_t& word : words) word = static_cast<uint16_t>(random() % 4 == 0 ? (random() % 2) * 65535 : random());
    return words;
}

/** The definition in wide numbers, with divisions that round down. */
int64_t PlainCorrected(const RowCorrection& correction, const RowBalance& balance, int64_t sample, size_t column) {
    const auto floored = [](int64_t a, int64_t b) { return a >= 0 ? a / b : -((b - 1 - a) / b); };
    int64_t value = std::min<int64_t>(sample, balance.largest) * (int64_t{1} << balance.leftShift);
    if (correction.pattern && value < balance.white[column % 4])
        value = std::clamp<int64_t>(value - correction.pattern[column], 0, 65535);
    int64_t light = std::max<int64_t>(value - balance.black[column % 4], 0);
    if (correction.upperGains) {
        const int64_t upper = correction.upperGains[column], lower = correction.lowerGains[column];
        const int64_t gain = upper + floored((lower - upper) * correction.lowerWeight + 16384, 32768);
        light = light * gain / 4096;
    }
    light = std::min<int64_t>(light, balance.white[column % 4] - balance.black[column % 4]);
    const int64_t one = int64_t{1} << balance.scale;
    return std::min<int64_t>((2 * light * balance.factors[column % 4] + one) / (2 * one), balance.limit);
}

TEST(CorrectRow, EqualsItsDefinitionOnEveryInstructionSet) {
    test::ForEachInstructionSet([] {
        std::mt19937 random(1);
        for (int round = 0; round < 400; ++round) {
            const size_t count = 1 + random() % 90;
            const Words samples = RandomWords(count, random);
            std::vector<int16_t> pattern(count), upper(count), lower(count);
            for (size_t i = 0; i < count; ++i) {
                pattern[i] = static_cast<int16_t>(random() % 8 == 0 ? random() : random() % 64 - 32);
                upper[i] = static_cast<int16_t>(4096 + random() % 28672);
                lower[i] = static_cast<int16_t>(4096 + random() % 28672);
            }
            RowBalance balance{};
            balance.leftShift = static_cast<uint8_t>(random() % 9);
            balance.largest = static_cast<uint16_t>(65535 >> balance.leftShift);
            balance.scale = static_cast<uint8_t>(round % 18);
            balance.limit = random() % 2 == 0 ? 65535 : 4095;
            for (size_t i = 0; i < 4; ++i) {
                balance.black[i] = static_cast<uint16_t>(random() % 4 == 0 ? random() : random() % 20000);
                balance.white[i] = static_cast<uint16_t>(balance.black[i] + random() % (65536 - balance.black[i]));
                balance.factors[i] = static_cast<uint16_t>(random());
            }
            RowCorrection correction{random() % 3 == 0 ? nullptr : pattern.data(),
                                     random() % 3 == 0 ? nullptr : upper.data(), lower.data(),
                                     static_cast<int16_t>(random() % 32768)};
            Words corrected = samples, balanced = samples;
            CorrectRow(correction, balance, corrected.data(), count);
            BalanceRow(balance, balanced.data(), balanced.data(), count);
            for (size_t i = 0; i < count; ++i) {
                ASSERT_EQ(corrected[i], PlainCorrected(correction, balance, samples[i], i)) << round << " " << i;
                ASSERT_EQ(balanced[i], PlainCorrected({}, balance, samples[i], i)) << round << " " << i;
            }
        }
    });
}

TEST(FindOutliers, EqualsItsDefinitionOnEveryInstructionSet) {
    test::ForEachInstructionSet([] {
        std::mt19937 random(2);
        for (int round = 0; round < 300; ++round) {
            const int width = static_cast<int>(1 + random() % 150), distance = random() % 2 == 0 ? 2 : 4;
            std::array<Words, 3> rows;
            for (Words& row : rows)
                for (int i = 0; i < width; ++i)
                    row.push_back(static_cast<uint16_t>(random() % 6 == 0 ? random() : 3000 + random() % 100));
            std::vector<int16_t> gains(width);
            for (int16_t& gain : gains) gain = static_cast<int16_t>(4096 + random() % 8000);
            const OutlierLimits limits{
                {1, 2, 30, 400}, {90, 90000, 400, 2e6F}, round % 2 == 0 ? gains.data() : nullptr};
            const uint64_t columns = round % 3 == 0 ? 0x5555555555555555 : ~uint64_t{0};
            std::vector<uint64_t> bits(width / 64 + 1);
            FindOutliers({rows[0].data(), rows[1].data(), rows[2].data(), size_t(width), uint32_t(distance)}, limits,
                         columns, bits.data());
            for (int i = 0; i < width; ++i) {
                int high = 0, low = 65535;
                for (int row = 0; row < 3; ++row)
                    for (int side = row == 1 ? -1 : 0, turn = 0; turn < (row == 1 ? 2 : 3); ++turn, side = -side) {
                        int step = row == 1 ? (turn == 0 ? -distance : distance) : (turn - 1) * distance;
                        if (i + step < 0 || i + step >= width) step = -step;
                        if (i + step < 0 || i + step >= width) step = 0;
                        high = std::max<int>(high, rows[row][i + step]);
                        low = std::min<int>(low, rows[row][i + step]);
                    }
                const int sample = rows[1][i], difference = std::max({sample - high, low - sample, 0});
                const float gain = limits.gains ? static_cast<float>(gains[i]) / 4096 : 1;
                const auto signal = static_cast<float>(sample > high ? high : low), size = float(difference);
                const float limit = (limits.slopes[i % 4] * signal + limits.intercepts[i % 4] * gain) * gain;
                ASSERT_EQ(bits[i / 64] >> i % 64 & 1, size * size > limit && (columns >> i % 64 & 1))
                    << round << " " << i << " of " << width;
            }
        }
    });
}

/** A camera with shading, fixed pattern and defects (single, 2x2, at the border) of frames of 70 x 50. */
std::shared_ptr<CameraProfile> FaultyCamera(const char* format) {
    auto profile = std::make_shared<CameraProfile>();
    profile->format = FormatByName(format);
    profile->width = 70;
    profile->height = 50;
    profile->blackLevel = Levels(60);
    profile->shading = {2, 2, {}};
    for (auto& gains : profile->shading.gains) gains = {1, 2, 2, 1.5F};
    for (uint32_t i = 0; i < 70 * 50; ++i) profile->darkFrame.push_back(static_cast<uint16_t>(16 * (56 + i % 9)));
    profile->hotPixels = {{0, 0}, {33, 21}, {69, 49}};
    profile->deadPixels = {{40, 30}, {41, 30}, {40, 31}, {41, 31}};
    return profile;
}

TEST(Camera, CorrectsAFrameToAnEvenOne) {
    for (const char* name : {"BayerGR12", "TrueSense_BGGR_WBBW_0_12", "Mono12p", "BayerRG8"}) {
        const Format format = FormatByName(name);
        const auto camera = FaultyCamera(format.bits == 8 ? "BayerRG12" : name);
        const double scale = format.bits == 8 ? 1.0 / 16 : 1;
        camera->gains = Gains();
        const auto sampleAt = [&](uint32_t row, uint32_t column) {
            const double y = row / 49.0, x = column / 69.0;
            const double gain = (1 + x) * (1 - y) + (2 - x / 2) * y;
            const double value = 56 + (row * 70 + column) % 9 + 1000 / gain;
            for (const auto& sites : {camera->hotPixels, camera->deadPixels})
                for (const Site& site : sites)
                    if (site == Site{column, row}) return static_cast<uint16_t>((row % 2) * 4095 * scale);
            return static_cast<uint16_t>(std::lround(value * scale));
        };
        const TestFrame frame = MakeFrame(format, 70, 50, sampleAt);
        auto unlisted = std::make_shared<CameraProfile>(*camera);
        unlisted->hotPixels.clear();
        unlisted->deadPixels.clear();
        for (const bool isCropped : {false, true}) {
            Converter converter(format.family);
            converter.SetCamera(isCropped ? camera : unlisted, isCropped ? std::optional(Site{8, 12}) : std::nullopt);
            converter.SetDefects(isCropped ? Defects::Listed : Defects::Auto);
            const SourceView view = isCropped ? Crop(frame.view, {8, 12, 40, 30}) : frame.view;
            TestPicture picture(FormatByName("RGB12"), view.width, view.height);
            converter.Convert(view, picture.View());
            const double light = 1000.0 / (4095 - 60) * 4095,
                         tolerance = format.bits == 8 ? 20 : 5;  // rounding, twice amplified
            for (uint32_t row = 0; row < view.height; ++row)
                for (uint32_t column = 0; column < view.width; ++column)
                    for (uint32_t channel = 0; channel < 3; ++channel)
                        ASSERT_NEAR(picture.At(row, column, channel), light, tolerance)
                            << name << " " << row << " " << column << " " << isCropped;
        }
        Converter converter(format.family);
        converter.SetCamera(camera);
        TestPicture picture(FormatByName("RGB8"), 70, 40);
        SourceView lower = frame.view;
        lower.height = 40;
        ExpectRefused(kInvalid, "for frames of 70x50", [&] { converter.Convert(lower, picture.View()); });
    }
    Converter converter(Family::Bayer);
    converter.SetCamera(FaultyCamera("BayerRG12"));
    const TestFrame frame = MakeNoise(FormatByName("BayerGR12"), 70, 50);
    TestPicture picture(FormatByName("RGB8"), 70, 50);
    ExpectRefused(kInvalid, "filters", [&] { converter.Convert(frame.view, picture.View()); });
}

TEST(Camera, CorrectsRowsAsItCorrectsWholeMosaics) {
    for (const char* name : {"BayerGR12", "BayerGR12p", "TrueSense_BGGR_WBBW_0_12"})
        for (const char* algorithm : {"0", "3", "fine"}) {
            const Format format = FormatByName(name);
            const TestFrame frame = MakeNoise(format, 70, 50);
            const auto picture = [&](bool hasDefect) {
                const auto camera = FaultyCamera(name);
                camera->hotPixels.resize(hasDefect ? 1
                                                   : 0);  // needs its neighbours; the others can be corrected by rows
                camera->deadPixels.clear();
                Converter converter(format.family);
                converter.SetAlgorithm(algorithm);
                converter.SetCamera(camera);
                TestPicture result(FormatByName("RGB12"), 70, 50);
                converter.Convert(frame.view, result.View());
                std::vector<uint32_t> samples;
                for (uint32_t i = 30 * 70; i < 50 * 70; ++i) samples.push_back(result.At(i / 70, i % 70, i % 3));
                return samples;
            };
            EXPECT_EQ(picture(true), picture(false)) << name << " " << algorithm;
        }
}

TEST(Camera, GivesItsNoiseToTheNoiseReduction) {
    const Format format = FormatByName("TrueSense_BGGR_WBBW_0_12");
    std::mt19937 random(3);
    const TestFrame frame =
        MakeFrame(format, 70, 50, [&](uint32_t, uint32_t) { return static_cast<uint16_t>(1000 + random() % 200); });
    auto camera = std::make_shared<CameraProfile>();
    camera->noise = NoiseAt(36.77);  // the last calibration point of the parameters, which no rounding changes
    for (const char* algorithm : {"kodak-like", "kodak", "fast"})
        for (const char* destination : {"RGB8", "BGR16"}) {
            const auto picture = [&](const auto& set) {
                Converter converter(Family::TrueSense);
                converter.SetAlgorithm(algorithm);
                set(converter);
                return PixelsOf(converter, frame.view, destination);
            };
            const auto ofCamera = picture([&](Converter& converter) { converter.SetCamera(camera); });
            EXPECT_EQ(ofCamera, picture([](Converter& converter) { converter.SetAnalogGain(36.77); }));
            EXPECT_EQ(ofCamera == picture([](Converter&) {}), std::string_view(algorithm) == "fast") << algorithm;
        }
}

TEST(Camera, ItsNoiseGrowsWithTheGains) {
    const Format format = FormatByName("TrueSense_BGGR_WBBW_0_12");
    for (const char* algorithm : {"kodak-like", "fine"}) {
        const auto picture = [&](int scale) {
            std::mt19937 random(4);
            const auto sampleAt = [&](uint32_t, uint32_t) {
                return static_cast<uint16_t>(scale * (500 + random() % 60));
            };
            const TestFrame frame = MakeFrame(format, 40, 30, sampleAt);
            const double gain = 2.0 / scale;
            auto camera = std::make_shared<CameraProfile>();
            camera->noise = SensorNoise{{0.5 * scale, 40.0 * scale * scale}, {0.7 * scale, 30.0 * scale * scale}};
            Converter converter(Family::TrueSense);
            converter.SetAlgorithm(algorithm);
            converter.SetCamera(camera);
            Finish finish;
            finish.gains = {gain, gain, gain, gain};
            converter.SetFinish(finish);
            return PixelsOf(converter, frame.view, "RGB12");
        };
        EXPECT_EQ(picture(1), picture(2)) << algorithm;  // the same light after gains of 2 and of 1
    }
}

}  // namespace
}  // namespace kvx::frame
