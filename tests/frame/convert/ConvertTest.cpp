#include <gtest/gtest.h>

#include <cmath>

#include "KvxDemosaicing/KvxBayer.h"
#include "KvxDemosaicing/KvxBayerFlat.h"
#include "KvxDemosaicing/KvxPixelFormat.h"
#include "KvxDemosaicing/KvxTrueSense.h"
#include "frame/support/TestFrames.h"

namespace kvx::frame {
namespace {

constexpr uint32_t kWidth = 21, kHeight = 10;

struct FlatArea {
    const char* name;
    Levels levels;
};
constexpr FlatArea kAreas[] = {{"red", {0.75, 0.125, 0.125}},
                               {"green", {0.125, 0.75, 0.125}},
                               {"blue", {0.125, 0.125, 0.75}},
                               {"grey", {0.5, 0.5, 0.5}},
                               {"white", {1, 1, 1}}};

/** All, but of the 16 phases of TrueSense in packed layouts only some. */
std::vector<Format> Sources() {
    std::vector<Format> sources;
    for (const Format& format : AllFormats())
        if (IsSource(format) &&
            (format.family != Family::TrueSense || format.layout == Layout::Plain || format.phase % 7 == 3))
            sources.push_back(format);
    return sources;
}

std::vector<Format> Destinations() {
    std::vector<Format> destinations;
    for (const Format& format : AllFormats())
        if (IsDestination(format)) destinations.push_back(format);
    return destinations;
}

/** @param check is given the share of white (0 to 1) of a channel in the picture */
template <class Check>
void ForEachChannel(TestPicture& picture, const Format& format, const Check& check) {
    for (uint32_t row = 0; row < kHeight; ++row)
        for (uint32_t column = 0; column < kWidth; ++column) {
            for (uint32_t channel = 0; channel < 3; ++channel)
                check(channel, static_cast<double>(picture.At(row, column, channel)) / White(format));
            if (SamplesPerPixel(format) == 4) {
                ASSERT_EQ(picture.At(row, column, 3), White(format));
            }
        }
}

/** Without a finish TrueSense frames go through a tone curve: there only order, evenness and white are certain. */
TEST(Convert, EverySourceBecomesEveryDestinationWithAndWithoutFinish) {
    for (const bool isFinished : {false, true})
        for (const Format& source : Sources()) {
            Converter converter(source.family);
            if (isFinished) converter.SetFinish(Finish{});
            const bool hasCurve = source.family == Family::TrueSense && !isFinished;
            if (hasCurve)  // the colours of the component's matrix are a camera's
                for (const char* name : {"RR", "RG", "RB", "GR", "GG", "GB", "BR", "BG", "BB"})
                    converter.SetParameter(name, name[0] == name[1] ? "1" : "0");
            for (const FlatArea& area : kAreas) {
                const Levels& levels = area.levels;
                TestFrame frame = MakeFlat(source, kWidth, kHeight, levels);
                const double grey = (levels[0] + levels[1] + levels[2]) / 3;
                for (const Format& destination : Destinations()) {
                    SCOPED_TRACE(Name(source) + " to " + NamesOf(destination).back().name + ", " + area.name);
                    TestPicture picture(destination, kWidth, kHeight);
                    converter.Convert(frame.view, picture.View());
                    ASSERT_TRUE(picture.Image().GuardsIntact());
                    const double dark =
                        static_cast<double>(picture.At(4, 4, levels[0] < 0.5 ? 0 : 1)) / White(destination);
                    ForEachChannel(picture, destination, [&](uint32_t channel, double share) {
                        const double level = source.family == Family::Mono ? grey : levels[channel];
                        if (!hasCurve) {
                            ASSERT_NEAR(share, level, 1.5 / 255 + 0.51 / White(source)) << "channel " << channel;
                        } else if (level == 0.75) {
                            ASSERT_GT(share, 1.3 * dark);
                        } else {
                            ASSERT_NEAR(share, level == 1 ? 1 : dark, 0.006);
                        }
                    });
                    if (testing::Test::HasFailure()) return;
                }
            }
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
        for (const char* algorithm : {"", "ipp", "edge-aware", "3"}) {
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

/** Bytes of a picture by the library itself, three samples per pixel. */
std::vector<uint8_t> ByLibrary(const SourceView& source, uint32_t pixelType, uint32_t depth) {
    std::vector<uint8_t> pixels(size_t{source.width} * source.height * 3 * (depth > 8 ? 2 : 1));
    _KvxImage src{};
    src.pixelType = *LibraryCode(source.format);
    src.pixelDepth = source.format.bits;
    src.width = source.width;
    src.height = source.height;
    src.lineStep = static_cast<uint32_t>(source.stride);
    src.data = const_cast<void*>(source.data);
    _KvxImage dst = src;
    dst.pixelType = pixelType;
    dst.pixelDepth = depth;
    dst.lineStep = static_cast<uint32_t>(pixels.size() / source.height);
    dst.data = pixels.data();
    if (source.format.family == Family::TrueSense) {
        KvxTrueSense* component = KvxTrueSense_CreateComponent();
        EXPECT_EQ(KvxTrueSense_ConvertImage(component, &src, &dst), 0u);
        KvxTrueSense_DeleteComponent(component);
    } else {
        EXPECT_EQ(BayerToColor(&src, &dst, KvxBayerAlgorithm_EdgeAware), 0u);
    }
    return pixels;
}

/** Whatever way a frame takes to the library, it comes out as if handed over directly. */
TEST(Convert, GivesTheLibrarysPictureForAnyLayoutAndStride) {
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
        const std::vector<uint8_t> expected = ByLibrary(frame.view, KvxFormat_BGR12, 12);
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

TEST(Convert, KnowsAlgorithmsByNameAndNumber) {
    const struct {
        Family family;
        const char *text, *name;
    } cases[] = {{Family::Bayer, "bilinear", "bilinear"},
                 {Family::Bayer, "1", "ipp"},
                 {Family::Bayer, "edge-aware", "edge-aware"},
                 {Family::Bayer, "4", "4"},
                 {Family::TrueSense, "fast", "fast"},
                 {Family::TrueSense, "2", "bayer-like"},
                 {Family::TrueSense, "6", "6"}};
    for (const auto& c : cases) {
        Converter converter(c.family);
        converter.SetAlgorithm(c.text);
        EXPECT_EQ(converter.AlgorithmName(), c.name);
        for (const char* none : {"", "7", "-1", "+1", "Bilinear", "2x", " 1"}) {
            EXPECT_THROW(converter.SetAlgorithm(none), Error) << none;
            EXPECT_EQ(converter.AlgorithmName(), c.name);
        }
    }
}

TEST(Convert, AppliesParametersByNameAndTellsThem) {
    Converter converter(Family::TrueSense);
    EXPECT_EQ(converter.AlgorithmName(), "fast");
    converter.SetAlgorithm("2");
    EXPECT_EQ(converter.AlgorithmName(), "bayer-like");
    converter.SetParameter("RR", "0.5");
    EXPECT_EQ(converter.Parameter("RR"), "0.5");
    EXPECT_EQ(converter.Parameters().size(), 66u);
    // A finish has the parameters set aside and gives them back.
    converter.SetFinish(Finish{});
    TestFrame frame = MakeFlat(FormatByName("SCF1WBWG12"), 8, 8, {0.5, 0.5, 0.5});
    TestPicture picture(FormatByName("RGB8"), 8, 8);
    converter.Convert(frame.view, picture.View());
    EXPECT_EQ(converter.Parameter("RR"), "0.5");
    EXPECT_EQ(converter.Parameter("normalizationEnable"), "0");
    converter.SetFinish(std::nullopt);
    converter.Convert(frame.view, picture.View());
    EXPECT_LT(picture.At(4, 4, 0), picture.At(4, 4, 1));  // the matrix with its halved red is back
}

}  // namespace
}  // namespace kvx::frame
