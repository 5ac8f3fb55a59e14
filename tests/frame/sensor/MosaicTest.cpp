#include <gtest/gtest.h>

#include <functional>

#include "frame/support/Refusals.h"
#include "frame/support/TestFrames.h"

namespace kvx::frame {
namespace {

struct Mosaicing {
    SourceView picture;
    DestinationView frame;
    Sensor sensor;
    int threads = 0;
};

/** A picture's sample, which tells its pixel and its colour; what is behind a clear filter is to be red. */
uint32_t PictureSample(uint32_t row, uint32_t column, uint32_t colour) {
    return (row * 64 + column * 4 + colour) & 0xFF;
}

uint32_t ColourAt(const Format& format, uint32_t row, uint32_t column) {
    const char filter = FilterAt(format, row, column);
    return filter == 'G' ? 1 : filter == 'B' ? 2 : 0;
}

TEST(MakeMosaic, FromAnyPictureToAnyLayout) {
    constexpr uint32_t kWidth = 13, kHeight = 9;
    for (const char* pictureName : {"RGB8", "BGR8", "RGBa8", "BGRx", "RGB16", "BGRA64_LE", "Mono8"}) {
        const Format pictureFormat = FormatByName(pictureName);
        const uint32_t samples = SamplesPerPixel(pictureFormat), bytes = pictureFormat.bits / 8;
        const bool isBlueFirst = pictureName[0] == 'B';
        std::vector<uint8_t> pixels(ImageBytes(pictureFormat, kWidth, kHeight, 0));
        for (uint32_t site = 0; site < kWidth * kHeight; ++site)
            for (uint32_t sample = 0; sample < samples; ++sample) {
                const uint32_t colour = samples == 1 ? 0 : isBlueFirst && sample < 3 ? 2 - sample : sample;
                pixels[(site * samples + sample) * bytes] =
                    static_cast<uint8_t>(PictureSample(site / kWidth, site % kWidth, colour));
            }
        for (const char* name : {"Mono8", "BayerGB8", "BayerRG10p", "BayerRG12Packed", "BayerGB10mipi", "SCF1WGWR12p",
                                 "BayerBG14be", "BayerBG12msb", "Mono16"}) {
            const Format format = FormatByName(name);
            for (const ptrdiff_t padding : {ptrdiff_t{-1}, ptrdiff_t{0}, ptrdiff_t{3}}) {  // -1: rows without a step
                const ptrdiff_t stride = padding < 0 ? 0 : static_cast<ptrdiff_t>(RowBytes(format, kWidth)) + padding;
                std::vector<uint8_t> frame(ImageBytes(format, kWidth, kHeight, stride), 0xA5);
                Sensor sensor;
                sensor.panWeights = {1, 0, 0};
                sensor.pictureWhite = 255;  // so that a byte is that share of white
                MakeMosaic({pixels.data(), kWidth, kHeight, 0, pixels.size(), pictureFormat},
                           {frame.data(), kWidth, kHeight, stride, frame.size(), format}, sensor, 2);
                const Format plain = Unpacked(format);
                const TestFrame expected = MakeFrame(plain, kWidth, kHeight, [&](uint32_t row, uint32_t column) {
                    const uint32_t colour = samples == 1 ? 0 : ColourAt(format, row, column);
                    const double light = PictureSample(row, column, colour) / 255.0;
                    return static_cast<uint16_t>(light * White(format) + 0.5 + 1e-7);
                });
                std::vector<uint8_t> found(expected.bytes.size());
                Relayout({frame.data(), kWidth, kHeight, stride, frame.size(), format},
                         {found.data(), kWidth, kHeight, expected.view.stride, found.size(), plain});
                ASSERT_EQ(found, expected.bytes) << pictureName << " " << name << " " << padding;
                for (uint32_t row = 0; padding > 0 && row + 1 < kHeight; ++row)
                    for (ptrdiff_t byte = stride - padding; byte < stride; ++byte)
                        ASSERT_EQ(frame[row * stride + byte], 0xA5) << name;
            }
        }
    }
}

/** Also where rows begin within bytes, which only one thread may write. */
TEST(MakeMosaic, SameFrameForAnyNumberOfThreadsAndUpsideDown) {
    constexpr uint32_t kWidth = 611, kHeight = 517;
    const TestFrame noise = MakeNoise(FormatByName("Mono8"), kWidth * 3, kHeight);
    SourceView picture = noise.view;
    picture.width = kWidth;
    picture.format = FormatByName("RGB8");
    Sensor sensor;
    sensor.noise = NoiseAt(30);
    const Format format = FormatByName("SCF1WGWR12p");
    const auto rowBytes = static_cast<ptrdiff_t>(RowBytes(format, kWidth));
    const auto frameOf = [&](int threads, ptrdiff_t stride) {
        std::vector<uint8_t> frame(rowBytes * kHeight);
        const ptrdiff_t toTop = stride < 0 ? rowBytes * (kHeight - 1) : 0;
        MakeMosaic(picture, {frame.data() + toTop, kWidth, kHeight, stride, frame.size(), format}, sensor, threads);
        return frame;
    };
    for (const ptrdiff_t stride : {rowBytes, ptrdiff_t{0}})
        for (const int threads : {2, 3, 7}) EXPECT_EQ(frameOf(threads, stride), frameOf(1, stride)) << threads;
    const auto expected = frameOf(1, rowBytes), flipped = frameOf(2, -rowBytes);
    EXPECT_TRUE(std::equal(expected.begin(), expected.begin() + rowBytes, flipped.end() - rowBytes));
}

/** Each fault alone, in the dark and in light, measured in the frame. */
TEST(MakeMosaic, FaultsAreThoseOfTheCamera) {
    constexpr uint32_t kWidth = 301, kHeight = 201;
    const Format format = FormatByName("BayerRG12");
    const auto frameOf = [&](uint16_t light, const Sensor& sensor) {
        const std::vector<uint16_t> picture(kWidth * kHeight, light);
        std::vector<uint16_t> frame(picture.size());
        MakeMosaic({picture.data(), kWidth, kHeight, 0, 2 * picture.size(), FormatByName("Mono16")},
                   {frame.data(), kWidth, kHeight, 0, 2 * frame.size(), format}, sensor);
        return frame;
    };
    Sensor sensor;
    sensor.blackLevel = 64.5;
    EXPECT_EQ(frameOf(0, sensor), std::vector<uint16_t>(kWidth * kHeight, 65));
    EXPECT_EQ(frameOf(65535, sensor), std::vector<uint16_t>(kWidth * kHeight, 4095));
    sensor.cornerLight = {0.5, 0.75, 0.25};
    const auto shaded = frameOf(65535, sensor);
    const uint16_t* const last = &shaded.back();  // red
    EXPECT_EQ(shaded[100 * kWidth + 150], 4095);
    EXPECT_EQ(shaded[0], 2080);  // 64.5 + 4030.5 / 2
    EXPECT_NEAR(last[-1], 64.5 + 4030.5 * 0.75, 15);
    EXPECT_NEAR(last[-static_cast<int>(kWidth) - 1], 64.5 + 4030.5 * 0.25, 50);

    const auto counts = [&](uint16_t light, const Sensor& faults, const auto& isFaulty) {
        const auto frame = frameOf(light, faults);
        return static_cast<double>(std::count_if(frame.begin(), frame.end(), isFaulty));
    };
    Sensor hot, dead, pattern;
    hot.hotPixels = dead.deadPixels = 200;
    EXPECT_NEAR(counts(0, hot, [](uint16_t s) { return s >= 41; }), 199, 1);  // two may fall on one site
    EXPECT_NEAR(counts(0, hot, [](uint16_t s) { return s >= 410; }), 100, 25);
    EXPECT_NEAR(counts(40000, dead, [](uint16_t s) { return s <= 1250; }), 199, 1);
    const auto first = frameOf(0, hot);
    hot.patternSeed = 2;
    EXPECT_NE(frameOf(0, hot), first);
    pattern.blackLevel = 100;
    pattern.fixedPattern = 5;
    EXPECT_NEAR(counts(0, pattern, [](uint16_t s) { return s > 105; }), kWidth * kHeight * 0.1357, 400);  // 5.5 of 5
}

TEST(MakeMosaic, RefusesWithCodeSentenceAndNothingWritten) {
    const std::tuple<const char*, uint32_t, std::function<void(Mosaicing&)>> refusals[] = {
        {"no picture", 0x80070007, [](Mosaicing& m) { m.picture.format = FormatByName("BayerRG8"); }},
        {"no picture", 0x80070007, [](Mosaicing& m) { m.picture.format = FormatByName("Mono12p"); }},
        {"no format of frames", 0x80070007, [](Mosaicing& m) { m.frame.format = FormatByName("RGB8"); }},
        {"make them equal", 0x80070007, [](Mosaicing& m) { m.frame.width = 3; }},
        {"too small", 0x80070007, [](Mosaicing& m) { --m.frame.capacity; }},
        {"too small", 0x80070007, [](Mosaicing& m) { --m.picture.capacity; }},
        {"no data", 0x80070008, [](Mosaicing& m) { m.picture.data = nullptr; }},
        {"share memory", 0x80070007, [](Mosaicing& m) { m.picture.data = m.frame.data; }},
        {"pan weight", 0x80070004, [](Mosaicing& m) { m.sensor.panWeights[1] = -1; }},
        {"pan weight", 0x80070004, [](Mosaicing& m) { m.sensor.panWeights[1] = std::nan(""); }},
        {"all pan weights", 0x80070004, [](Mosaicing& m) { m.sensor.panWeights = {}; }},
        {"white of 256", 0x80070004, [](Mosaicing& m) { m.sensor.pictureWhite = 256; }},
        {"finite", 0x80070004, [](Mosaicing& m) { m.sensor.noise.emplace().pan.slope = INFINITY; }},
        {"threads", 0x80070004, [](Mosaicing& m) { m.threads = -1; }},
        {"black level of 255", 0x80070004, [](Mosaicing& m) { m.sensor.blackLevel = 255; }},
        {"light of 0", 0x80070004, [](Mosaicing& m) { m.sensor.cornerLight[1] = 0; }},
        {"fixed pattern", 0x80070004, [](Mosaicing& m) { m.sensor.fixedPattern = -1; }},
        {"17 hot", 0x80070004, [](Mosaicing& m) { m.sensor.hotPixels = 17; }},
    };
    for (const auto& [sentence, result, spoil] : refusals) {
        const std::vector<uint8_t> picture(4 * 4 * 3, 100);
        std::vector<uint8_t> frame(4 * 4 * 3, 0xA5);
        Mosaicing job{{picture.data(), 4, 4, 0, picture.size(), FormatByName("RGB8")},
                      {frame.data(), 4, 4, 0, 16, FormatByName("BayerRG8")},
                      {},
                      0};
        spoil(job);
        ExpectRefused(result, sentence, [&] { MakeMosaic(job.picture, job.frame, job.sensor, job.threads); });
        EXPECT_EQ(frame, std::vector<uint8_t>(frame.size(), 0xA5)) << sentence;
    }
    std::vector<uint8_t> words(4 * 4 * 2), bytes(4 * 4);
    ExpectRefused(0x80070007, "only the layout", [&] {
        Relayout({words.data(), 4, 4, 8, words.size(), FormatByName("BayerRG12")},
                 {bytes.data(), 4, 4, 4, bytes.size(), FormatByName("BayerRG8")});
    });
    EXPECT_THROW(NoiseAt(-1), Error);
    EXPECT_THROW(NoiseAt(std::nan("")), Error);
}

}  // namespace
}  // namespace kvx::frame
