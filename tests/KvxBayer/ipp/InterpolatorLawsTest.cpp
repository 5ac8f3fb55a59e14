// What the in-house interpolator promises whatever its arithmetic, and its life from frame to frame.
#include <gtest/gtest.h>

#include "KvxBayer/ipp/DemosaicingIPP.h"
#include "support/BayerFrames.h"
#include "support/BayerFunctions.h"

namespace kvx::test {
namespace {

constexpr const char* kPatterns[4] = {"GRBG", "RGGB", "BGGR", "GBRG"};  // in the order of BayerDepth::patterns

char ColourAt(int pattern, size_t x, size_t y) {
    return kPatterns[pattern][y % 2 * 2 + x % 2];
}

struct Colour {
    unsigned red, green, blue;
    unsigned Of(char name) const {
        return name == 'R' ? red : name == 'G' ? green : blue;
    }
};

/** Samples of a frame of one colour. */
std::vector<uint8_t> FlatSamples(int pattern, const Colour& colour, uint32_t width, uint32_t height, int depth) {
    std::vector<uint8_t> bytes;
    for (size_t y = 0; y < height; ++y)
        for (size_t x = 0; x < width; ++x) {
            const unsigned sample = colour.Of(ColourAt(pattern, x, y));
            bytes.push_back(static_cast<uint8_t>(sample));
            if (depth > 8) bytes.push_back(static_cast<uint8_t>(sample >> 8));
        }
    return bytes;
}

/** Red, green and blue of each pixel. */
std::vector<unsigned> Converted(const BayerDepth& depth, int pattern, uint32_t width, uint32_t height,
                                const std::vector<uint8_t>& samples) {
    GuardedImage src = MakeSource(depth.patterns[pattern], depth.depth, width, height, 0, samples);
    GuardedImage dst(depth.rgb, width, height, width * 3 * depth.SampleSize(), width * 3 * depth.SampleSize());
    EXPECT_EQ(BayerToColor(&src.Record(), &dst.Record(), 1), 0u);
    EXPECT_TRUE(dst.GuardsIntact());
    const auto bytes = dst.Pixels();
    std::vector<unsigned> picture;
    for (size_t i = 0; i < bytes.size(); i += depth.SampleSize())
        picture.push_back(bytes[i] + (depth.depth > 8 ? bytes[i + 1] * 256u : 0));
    return picture;
}

TEST(InterpolatorLaws, AFlatColourStaysAsItIs) {
    constexpr uint32_t sizes[][2] = {{2, 2}, {3, 3}, {9, 4}, {40, 25}};
    for (const BayerDepth& depth : kBayerDepths) {
        const unsigned most = (1u << depth.depth) - 1;
        for (const Colour& colour :
             {Colour{most, 0, 0}, Colour{0, most, 0}, Colour{1, most - 1, most / 3}, Colour{most / 7, most / 5, most}})
            for (int pattern = 0; pattern < 4; ++pattern)
                for (const auto& [width, height] : sizes) {
                    const auto picture = Converted(depth, pattern, width, height,
                                                   FlatSamples(pattern, colour, width, height, depth.depth));
                    for (size_t i = 0; i < picture.size(); i += 3) {
                        ASSERT_EQ(picture[i], colour.red) << depth.depth << " bits, " << width << "x" << height;
                        ASSERT_EQ(picture[i + 1], colour.green);
                        ASSERT_EQ(picture[i + 2], colour.blue);
                    }
                }
    }
}

TEST(InterpolatorLaws, AnOddFrameIsAPartOfTheOneWithItsLastCellsCompleted) {
    constexpr uint32_t sizes[][2] = {{7, 5}, {3, 3}, {8, 41}, {1051, 4}};
    const BayerDepth& depth = kBayerDepths[0];
    for (int pattern = 0; pattern < 4; ++pattern)
        for (const auto& [width, height] : sizes) {
            const uint32_t wholeWidth = width + width % 2, wholeHeight = height + height % 2;
            const auto samples = MakeSamples(Fill::Noise, width, height, depth.depth, width + pattern);
            std::vector<uint8_t> whole;
            for (uint32_t y = 0; y < wholeHeight; ++y)
                for (uint32_t x = 0; x < wholeWidth; ++x)
                    whole.push_back(samples[(y < height ? y : y - 2) * width + (x < width ? x : x - 2)]);
            const auto picture = Converted(depth, pattern, width, height, samples);
            const auto expected = Converted(depth, pattern, wholeWidth, wholeHeight, whole);
            for (uint32_t y = 0; y < height; ++y)
                ASSERT_TRUE(std::equal(&picture[y * width * 3], &picture[y * width * 3] + width * 3,
                                       &expected[y * wholeWidth * 3]))
                    << kPatterns[pattern] << " " << width << "x" << height << ", row " << y;
        }
}

TEST(InterpolatorLaws, AFrameOfOneLineHasTheColoursThatItsSamplesHave) {
    constexpr uint32_t sizes[][2] = {{1, 1}, {1, 2}, {2, 1}, {1, 9}, {12, 1}};
    constexpr Colour colour{900, 500, 100};
    for (const BayerDepth& depth : {kBayerDepths[2], kBayerDepths[4]})
        for (int pattern = 0; pattern < 4; ++pattern)
            for (const auto& [width, height] : sizes) {
                SCOPED_TRACE(testing::Message() << kPatterns[pattern] << ", " << width << "x" << height);
                const auto picture =
                    Converted(depth, pattern, width, height, FlatSamples(pattern, colour, width, height, depth.depth));
                std::string present;
                for (size_t y = 0; y < std::min(height, 2u); ++y)
                    for (size_t x = 0; x < std::min(width, 2u); ++x) present += ColourAt(pattern, x, y);
                // Green stands in for a colour that is missing; where green is missing, the only sample does.
                const unsigned standIn = colour.Of(present.find('G') != std::string::npos ? 'G' : present[0]);
                for (size_t i = 0; i < picture.size(); ++i) {
                    const char name = "RGB"[i % 3];
                    ASSERT_EQ(picture[i], present.find(name) != std::string::npos ? colour.Of(name) : standIn);
                }
            }
}

TEST(InterpolatorLaws, KnownSamplesAreKeptAndLargerOnesClamped) {
    for (const BayerDepth& depth : kBayerDepths)
        for (int pattern = 0; pattern < 4; ++pattern) {
            const auto samples = MakeSamples(Fill::Noise, 37, 22, depth.depth == 8 ? 8 : 16, 7);
            const auto picture = Converted(depth, pattern, 37, 22, samples);
            const unsigned most = (1u << depth.depth) - 1;
            for (size_t i = 0; i < 37 * 22; ++i) {
                const unsigned sample = depth.depth == 8 ? samples[i] : samples[2 * i] + samples[2 * i + 1] * 256u;
                const size_t channel = std::string("RGB").find(ColourAt(pattern, i % 37, i / 37));
                ASSERT_EQ(picture[3 * i + channel], std::min(sample, most)) << depth.depth << " bits, site " << i;
            }
            EXPECT_LE(*std::max_element(picture.begin(), picture.end()), most);
        }
}

TEST(InterpolatorLaws, TheRecordsDepthRulesWhereSamplesCanHaveIt) {
    struct Case {
        uint32_t srcType, depth;
        unsigned most;
    };
    constexpr Case cases[] = {{KvxFormat_BayerRG8, 6, 63},
                              {KvxFormat_BayerRG8, 12, 255},
                              {KvxFormat_BayerRG8, 0, 255},
                              {KvxFormat_BayerRG12, 10, 1023},
                              {KvxFormat_BayerRG12, 16, 65535},
                              {KvxFormat_BayerRG12, 0, 4095},
                              {KvxFormat_BayerRG12, 4000000000, 65535}};
    for (const Case& c : cases) {
        const size_t sampleSize = c.srcType == KvxFormat_BayerRG8 ? 1 : 2;
        GuardedImage src(c.srcType, 4, 4, 4 * sampleSize, 4 * sampleSize);
        src.SetPixels(std::vector<uint8_t>(16 * sampleSize, 255));
        src.Record().pixelDepth = c.depth;
        GuardedImage dst(sampleSize == 1 ? KvxFormat_RGB8 : KvxFormat_RGB12, 4, 4, 12 * sampleSize, 12 * sampleSize);
        ASSERT_EQ(BayerToColor(&src.Record(), &dst.Record(), 1), 0u);
        for (size_t i = 0; i < 48; ++i) {
            const auto pixels = dst.Pixels();
            const unsigned value = sampleSize == 1 ? pixels[i] : pixels[2 * i] + pixels[2 * i + 1] * 256u;
            ASSERT_EQ(value, c.most) << c.depth;
        }
    }
}

TEST(InterpolatorLaws, BytesAreTheWordsShiftedOrRounded) {
    for (const BayerDepth& depth : kBayerDepths)
        for (const Fill fill : {Fill::Noise, Fill::Extremes}) {
            if (depth.depth == 8) continue;
            const auto samples = MakeSamples(fill, 53, 31, depth.depth, 3);
            const auto words = Converted(depth, 2, 53, 31, samples);
            GuardedImage src = MakeSource(depth.patterns[2], depth.depth, 53, 31, 0, samples);
            GuardedImage shifted(0, 53, 31, 53 * 3, 53 * 3 + 7), slots(0, 53, 31, 53 * 4, 53 * 4 + 3);
            GuardedImage rounded(KvxFormat_RGB8, 53, 31, 53 * 3, 53 * 3 + 7);
            ASSERT_EQ(CallFlat(depth.depth, 8, false, 3, src, shifted, 2, 1), 0u);
            ASSERT_EQ(CallFlat(depth.depth, 8, false, 4, src, slots, 2, 1), 0u);
            ASSERT_EQ(BayerToColor(&src.Record(), &rounded.Record(), 1), 0u);
            for (GuardedImage* image : {&shifted, &slots, &rounded}) EXPECT_TRUE(image->GuardsIntact());
            const int shift = depth.depth - 8;
            for (size_t i = 0; i < words.size(); ++i) {
                const size_t row = i / 159, column = i % 159;
                ASSERT_EQ(shifted.Row(row)[column], words[i] >> shift);
                ASSERT_EQ(slots.Row(row)[column], words[i] >> shift);
                ASSERT_EQ(rounded.Row(row)[column], cv::saturate_cast<uint8_t>(words[i] / double(1 << shift)));
            }
            for (size_t row = 0; row < 31; ++row)
                for (size_t column = 159; column < 212; ++column) ASSERT_EQ(slots.Row(row)[column], 0);
        }
}

TEST(InterpolatorLaws, ResultCodesOfTheClasses) {
    const auto samples = MakeSamples(Fill::Noise, 8, 6, 12, 1);
    GuardedImage src = MakeSource(KvxFormat_BayerRG12, 12, 8, 6, 0, samples);
    GuardedImage dst(KvxFormat_RGB12, 8, 6, 48, 48);
    DemosaicingIPP_16 words;
    DemosaicingIPP_8 bytes;
    EXPECT_EQ(words.Calculate(), 7u);  // nothing to calculate yet
    EXPECT_EQ(words.Init(nullptr, &src.Record()), 8u);
    EXPECT_EQ(words.Init(&dst.Record(), nullptr), 8u);
    EXPECT_EQ(bytes.Init(&dst.Record(), &src.Record()), 7u);
    for (const uint32_t notBayer : {KvxFormat_Mono12, KvxFormat_BayerRG12p, KvxFormat_TrueSense_BGGR_WBBW_0_12}) {
        src.Record().pixelType = notBayer;
        EXPECT_EQ(words.Init(&dst.Record(), &src.Record()), 7u);
    }
    src.Record().pixelType = KvxFormat_BayerRG12;
    src.Record().height = dst.Record().height = (1u << 30) + 1;
    EXPECT_EQ(words.Init(&dst.Record(), &src.Record()), 7u);
    src.Record().height = dst.Record().height = 6;
    ASSERT_EQ(words.Init(&dst.Record(), &src.Record()), 0u);
    EXPECT_TRUE(dst.Untouched());
    EXPECT_EQ(words.CleanMemory(), 0u);
    EXPECT_EQ(words.Calculate(), 7u);
    EXPECT_EQ(words.Init(nullptr, &src.Record()), 8u);
    EXPECT_EQ(words.Calculate(), 7u);  // a refused frame does not leave the one before
    EXPECT_TRUE(dst.Untouched());
}

TEST(InterpolatorLaws, AComponentGivesTheSameWhateverItConvertedBefore) {
    KvxBayer* component = KvxBayer_CreateComponent();
    KvxComponent_SetParamInt(KvxBayer_GetComponent(component), "BayerAlgType", 1);
    unsigned seed = 1;
    for (const uint32_t size : {40u, 41u, 1u, 300u, 40u})
        for (const BayerDepth& depth : {kBayerDepths[0], kBayerDepths[2]}) {
            const auto samples = MakeSamples(Fill::Noise, size, size, depth.depth, seed++);
            GuardedImage src = MakeSource(depth.patterns[seed % 4], depth.depth, size, size, 0, samples);
            GuardedImage dst(depth.rgb, size, size, size * 3 * depth.SampleSize(), size * 3 * depth.SampleSize());
            GuardedImage fresh = dst.Fresh();
            ASSERT_EQ(BayerToColor(&src.Record(), &fresh.Record(), 1), 0u);
            ASSERT_EQ(KvxBayer_ConvertImage(component, &src.Record(), &dst.Record()), 0u);
            EXPECT_EQ(dst.Pixels(), fresh.Pixels()) << size;
            if (seed % 3 == 0) KvxBayer_ReleaseData(component);
            if (seed % 3 == 1) {
                EXPECT_EQ(KvxBayer_AllocData(component, &src.Record(), &dst.Record()), 0u);
            }
        }
    KvxBayer_DeleteComponent(component);
}

}  // namespace
}  // namespace kvx::test
