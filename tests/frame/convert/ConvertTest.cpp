#include <gtest/gtest.h>

#include <cmath>

#include "frame/support/TestFrames.h"

namespace kvx::frame {
namespace {

constexpr uint32_t kWidth = 21, kHeight = 10;

/** All formats that the predicate takes, but only some of the 16 phases of packed TrueSense. */
std::vector<Format> Formats(bool (*isTaken)(const Format&)) {
    std::vector<Format> formats;
    for (const Format& format : AllFormats())
        if (isTaken(format) &&
            (format.family != Family::TrueSense || format.layout == Layout::Plain || format.phase % 7 == 3))
            formats.push_back(format);
    return formats;
}

/** Without a finish TrueSense frames go through a tone curve: there only order, evenness and white are certain. */
TEST(Convert, EverySourceBecomesEveryDestinationWithAndWithoutFinish) {
    const auto check = [](Converter& converter, const Format& source, const Format& destination, bool hasCurve,
                          const Colour& levels) {
        TestFrame frame = MakeFlat(source, kWidth, kHeight, levels);
        TestPicture picture(destination, kWidth, kHeight);
        converter.Convert(frame.view, picture.View());
        ASSERT_TRUE(picture.Image().GuardsIntact());
        const double white = White(destination), dark = picture.At(4, 4, levels[0] < 0.5 ? 0 : 1) / white;
        const double grey = (levels[0] + levels[1] + levels[2]) / 3;
        for (uint32_t site = 0; site < kWidth * kHeight; ++site)
            for (uint32_t channel = 0; channel < SamplesPerPixel(destination); ++channel) {
                const double share = picture.At(site / kWidth, site % kWidth, channel) / white;
                const double level = channel == 3 ? 1 : source.family == Family::Mono ? grey : levels[channel];
                if (channel == 3)
                    ASSERT_EQ(share, 1);
                else if (!hasCurve)
                    ASSERT_NEAR(share, level, 1.5 / 255 + 0.51 / White(source)) << "channel " << channel;
                else if (level == 0.75)
                    ASSERT_GT(share, 1.3 * dark);
                else
                    ASSERT_NEAR(share, level == 1 ? 1 : dark, 0.006);
            }
    };
    for (const char* algorithm : {"0", "fine", "swift"})
        for (const bool isFinished : {false, true})
            for (const Format& source : Formats(IsSource)) {
                if (*algorithm != '0' && source.layout != Layout::Plain) continue;  // the same after unpacking
                Converter converter(source.family);
                if (source.family != Family::Mono) converter.SetAlgorithm(algorithm);
                if (isFinished) converter.SetFinish(Finish{});
                const bool hasCurve = source.family == Family::TrueSense && !isFinished;
                if (hasCurve)  // the colours of the component's matrix are a camera's
                    for (const char* name : {"RR", "RG", "RB", "GR", "GG", "GB", "BR", "BG", "BB"})
                        converter.SetParameter(name, name[0] == name[1] ? "1" : "0");
                for (const Colour& levels : {Colour{0.75, 0.125, 0.125}, Colour{0.125, 0.75, 0.125},
                                             Colour{0.125, 0.125, 0.75}, Colour{0.5, 0.5, 0.5}, Colour{1, 1, 1}})
                    for (const Format& destination : Formats(IsDestination))
                        ASSERT_NO_FATAL_FAILURE(check(converter, source, destination, hasCurve, levels))
                            << Name(source) << " to " << NamesOf(destination).back().name << ", " << levels[0] << " "
                            << levels[1] << " " << levels[2];
            }
}

TEST(Convert, ScalesByTheDocumentedRule) {
    const struct {
        const char *source, *destination;
        uint16_t sample;
        uint32_t expected;
    } cases[] = {
        {"BayerRG12", "RGB8", 0xABC, 0xAB},
        {"BayerRG14p", "BGRa8", 0x3FFF, 255},
        {"BayerRG12", "RGB12", 0xABC, 0xABC},
        {"BayerRG12", "RGB16", 0xABC, 43978},  // 2748 * 65535 / 4095 = 43978.1
        {"BayerRG12", "BGR10", 0xABC, 686},
        {"BayerGB8", "RGB10", 100, 401},  // 401.2
        {"Mono8", "RGB8", 77, 77},
        {"Mono12p", "RGBx", 0xABC, 0xAB},
        {"Mono10", "RGBa16", 1, 64},
        {"BayerGR16", "RGB8", 0xABCD, 0xAB},
        {"BayerRG10be", "RGB10", 0x2A5, 0x2A5},
        {"BayerRG10msb", "RGB8", 0x2A5, 0xA9},
    };
    for (const auto& c : cases)
        for (const char* algorithm : {"", "ipp", "edge-aware", "3", "fine", "swift"}) {
            SCOPED_TRACE(std::string(c.source) + " to " + c.destination + " " + algorithm);
            const Format source = FormatByName(c.source);
            if (source.family == Family::Mono && *algorithm) continue;
            TestFrame frame = MakeFrame(source, kWidth, kHeight, [&](uint32_t, uint32_t) { return c.sample; });
            TestPicture picture(FormatByName(c.destination), kWidth, kHeight);
            Options options;
            options.algorithm = algorithm;
            Convert(frame.view, picture.View(), options);
            for (uint32_t channel = 0; channel < 3; ++channel) EXPECT_EQ(picture.At(3, 5, channel), c.expected);
        }
}

/** The picture is that of the plain frame, whose bits are those of ChecksumTest.cpp. */
TEST(Convert, GivesOnePictureForAnyLayoutAndStride) {
    const auto picture = [](const SourceView& source, bool isUpsideDown) {  // stored from the last row to the first
        TestPicture result(FormatByName("BGR12"), source.width, source.height);
        Options options;
        if (source.format.family == Family::Bayer) options.algorithm = "edge-aware";
        Convert(source, isUpsideDown ? FlippedVertically(result.View()) : result.View(), options);
        std::vector<uint8_t> pixels = result.Image().Pixels();
        const size_t rowBytes = pixels.size() / source.height;
        for (size_t row = 0; isUpsideDown && row < source.height / 2; ++row)
            std::swap_ranges(pixels.begin() + row * rowBytes, pixels.begin() + (row + 1) * rowBytes,
                             pixels.end() - (row + 1) * rowBytes);
        return pixels;
    };
    for (const char* name : {"BayerGB12", "TrueSense_GBRG_WGGW_1_12"}) {
        Format format = FormatByName(name);
        TestFrame frame = MakeNoise(format, 37, 14);
        const std::vector<uint8_t> expected = picture(frame.view, false);
        const auto* samples = reinterpret_cast<const uint16_t*>(frame.bytes.data());
        const auto sampleAt = [&](uint32_t row, uint32_t column) { return samples[row * 37 + column]; };
        for (const Layout layout :
             {Layout::Plain, Layout::MsbAligned, Layout::BigEndian, Layout::Pfnc, Layout::GigE, Layout::Mipi}) {
            format.layout = layout;
            const TestFrame other = MakeFrame(format, 37, 14, sampleAt, 7);
            for (const bool isUpsideDown : {false, true})
                EXPECT_EQ(picture(other.view, isUpsideDown), expected) << Name(format) << isUpsideDown;
        }
        // Rows without padding, which in a packed layout begin within bytes.
        format.layout = Layout::Pfnc;
        std::vector<uint8_t> packed(ImageBytes(format, 37, 14, 0));
        PackSamples(*PackingOf(format), samples, 0, size_t{37} * 14, packed.data(), packed.size());
        EXPECT_EQ(picture({packed.data(), 37, 14, 0, packed.size(), format}, false), expected);
    }
}

/** A component takes bytes as such for pictures of bytes only. */
TEST(Convert, WidensBytesOfTrueSenseFramesToTwelveBits) {
    TestFrame narrow = MakeNoise(FormatByName("SCF1WBWG8"), 20, 12);
    TestFrame wide = MakeFrame(FormatByName("SCF1WBWG12"), 20, 12, [&](uint32_t row, uint32_t column) {
        const uint8_t sample = narrow.bytes[row * 20 + column];
        return static_cast<uint16_t>(sample << 4 | sample >> 4);  // white stays white
    });
    TestPicture picture(FormatByName("RGB16"), 20, 12), expected(FormatByName("RGB16"), 20, 12);
    Convert(narrow.view, picture.View());
    Convert(wide.view, expected.View());
    EXPECT_EQ(picture.Image().Pixels(), expected.Image().Pixels());
}

TEST(Convert, KnowsAlgorithmsByNameAndNumber) {
    EXPECT_EQ(Converter(Family::TrueSense).AlgorithmName(), "fast");
    for (const auto& [family, text, name] : {std::tuple(Family::Bayer, "bilinear", "bilinear"),
                                             {Family::Bayer, "1", "ipp"},
                                             {Family::Bayer, "4", "4"},
                                             {Family::Bayer, "edge-aware", "edge-aware"},
                                             {Family::TrueSense, "2", "bayer-like"},
                                             {Family::TrueSense, "fast", "fast"},
                                             {Family::TrueSense, "6", "6"}}) {
        Converter converter(family);
        converter.SetAlgorithm(text);
        for (const char* none : {"", "7", "-1", "+1", "Bilinear", "2x", " 1"})
            EXPECT_THROW(converter.SetAlgorithm(none), Error) << none;
        EXPECT_EQ(converter.AlgorithmName(), name);
    }
}

/** A finish replaces them for the conversion only. */
TEST(Convert, AppliesParametersByName) {
    Converter converter(Family::TrueSense);
    converter.SetParameter("RR", "0.5");
    EXPECT_EQ(converter.Parameters().size(), 66u);
    TestFrame frame = MakeFlat(FormatByName("SCF1WBWG12"), 8, 8, {0.5, 0.5, 0.5});
    TestPicture picture(FormatByName("RGB8"), 8, 8);
    for (const bool isFinished : {true, false}) {
        converter.SetFinish(isFinished ? std::optional(Finish{}) : std::nullopt);
        converter.Convert(frame.view, picture.View());
        EXPECT_EQ(picture.At(4, 4, 0) < picture.At(4, 4, 1), !isFinished);  // the matrix with its halved red
        EXPECT_EQ(converter.Parameter("RR"), "0.5");
        EXPECT_EQ(converter.Parameter("normalizationEnable"), "0");
    }
}

}  // namespace
}  // namespace kvx::frame
