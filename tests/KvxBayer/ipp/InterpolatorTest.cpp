// The in-house interpolator gives its slow twin's picture to the bit, for any tiles, threads and instruction set; and
// what the twin does not cover: frames of one line, bytes of words, result codes, reuse from frame to frame.
#include <gtest/gtest.h>
#include <omp.h>

#include "KvxBayer/ipp/DemosaicingIPP.h"
#include "support/BayerFrames.h"
#include "support/BayerFunctions.h"
#include "support/InstructionSets.h"
#include "support/SlowInterpolator.h"

namespace kvx::test {
namespace {

struct Frame {
    const BayerDepth& depth;
    int pattern;
    uint32_t width, height;
    std::vector<uint8_t> samples;

    std::vector<uint16_t> SlowPicture() const {
        return SlowInterpolator(WordsOf(samples, depth.depth), static_cast<int>(width), static_cast<int>(height),
                                depth.depth, kBayerTiles[pattern])
            .Picture();
    }
    /** Padded rows, at an odd address. */
    GuardedImage Source() const {
        return MakeSource(depth.patterns[pattern], depth.depth, width, height, 3, samples, 1);
    }
    std::vector<uint16_t> Picture(bool blueFirst = false) const {
        GuardedImage src = Source();
        const size_t rowBytes = width * 3 * depth.SampleSize();
        GuardedImage dst(blueFirst ? depth.bgr : depth.rgb, width, height, rowBytes, rowBytes + 5, 1);
        EXPECT_EQ(BayerToColor(&src.Record(), &dst.Record(), 1), 0u);
        EXPECT_TRUE(dst.GuardsIntact());
        return WordsOf(dst.Pixels(), depth.depth);
    }
};

/** A smooth scene with edges: flat areas, ramps, and a disc of another colour. */
std::vector<uint8_t> SceneSamples(uint32_t width, uint32_t height, int depth, int pattern) {
    return SamplesBy(width, height, depth, [&](uint32_t row, uint32_t column) {
        const int y = static_cast<int>(row), x = static_cast<int>(column);
        const bool disc = (x - 20) * (x - 20) + (y - 12) * (y - 12) < 100;
        const char colour = BayerFilterAt(pattern, row, column);
        const int value = disc ? (colour == 'R' ? 230 : 40) : x < 40 ? 90 : std::min(255, 4 * (x - 40) + y);
        return value << (depth - 8);
    });
}

TEST(Interpolator, EqualsItsSlowTwinForEveryFormatAndInstructionSet) {
    constexpr uint32_t sizes[][2] = {{2, 2}, {3, 2}, {2, 5}, {5, 3}, {7, 6}, {23, 9}, {33, 18}, {64, 41}, {129, 20}};
    unsigned seed = 1;
    for (const BayerDepth& depth : kBayerDepths)
        for (int pattern = 0; pattern < 4; ++pattern)
            for (const auto& [width, height] : sizes) {
                SCOPED_TRACE(testing::Message()
                             << depth.depth << " bits, " << kBayerTiles[pattern] << ", " << width << "x" << height);
                const Fill fill = seed++ % 2 ? Fill::Noise : Fill::Extremes;
                for (const auto& samples : {MakeSamples(fill, width, height, depth.depth, seed),
                                            MakeSamples(fill, width, height, depth.depth == 8 ? 8 : 16, seed),  // wild
                                            SceneSamples(width, height, depth.depth, pattern)}) {
                    const Frame frame{depth, pattern, width, height, samples};
                    const auto expected = frame.SlowPicture();
                    ForEachInstructionSet([&] { ASSERT_EQ(frame.Picture(), expected); });
                    auto blueFirst = frame.Picture(true);
                    for (size_t i = 0; i < blueFirst.size(); i += 3) std::swap(blueFirst[i], blueFirst[i + 2]);
                    ASSERT_EQ(blueFirst, expected);
                }
            }
}

TEST(Interpolator, IsTheSameForEveryThreadCountAndCutIntoTiles) {
    constexpr uint32_t sizes[][2] = {{20, 2101}, {2301, 24}, {1050, 131}};  // several tiles down, across, both
    const int before = omp_get_max_threads();
    for (const auto& [width, height] : sizes) {
        const Frame frame{kBayerDepths[2], 3, width, height, MakeSamples(Fill::Noise, width, height, 12, width)};
        const auto expected = frame.SlowPicture();
        for (const int threads : {1, 2, 7}) {
            omp_set_num_threads(threads);
            EXPECT_EQ(frame.Picture(), expected) << width << "x" << height << ", " << threads << " threads";
        }
    }
    // More threads than there were at Init() must not find a worker missing.
    const Frame frame{kBayerDepths[2], 3, 20, 2101, MakeSamples(Fill::Noise, 20, 2101, 12, 1)};
    GuardedImage src = frame.Source(), dst(KvxFormat_RGB12, 20, 2101, 120, 120);
    DemosaicingIPP_16 interpolator;
    omp_set_num_threads(1);
    ASSERT_EQ(interpolator.Init(&dst.Record(), &src.Record()), 0u);
    omp_set_num_threads(7);
    EXPECT_EQ(interpolator.Calculate(), 0u);
    EXPECT_EQ(WordsOf(dst.Pixels(), 12), frame.SlowPicture());
    omp_set_num_threads(before);
}

/** A frame of one row or column, with a second one: each site repeats its neighbour, green ones the next green one. */
Frame WithASecondLine(const Frame& line) {
    const uint32_t length = std::max(line.width, line.height);
    const bool isColumn = line.width == 1;
    Frame wide{line.depth, line.pattern, std::max(line.width, 2u), std::max(line.height, 2u), {}};
    wide.samples = SamplesBy(wide.width, wide.height, 8, [&](uint32_t y, uint32_t x) {
        uint32_t along = std::min(isColumn ? y : x, length - 1);
        const bool added = x >= line.width || y >= line.height;
        if (added && BayerFilterAt(line.pattern, y, x) == 'G')
            along = along + 1 < length ? along + 1 : length < 2 ? 0 : along - 1;
        return line.samples[along];
    });
    return wide;
}

TEST(Interpolator, AFrameOfOneLineIsAPartOfTheOneWithASecondLine) {
    constexpr uint32_t sizes[][2] = {{1, 1}, {1, 2}, {2, 1}, {1, 9}, {12, 1}};
    for (int pattern = 0; pattern < 4; ++pattern)
        for (const auto& [width, height] : sizes) {
            const Frame line{kBayerDepths[0], pattern, width, height, MakeSamples(Fill::Noise, width, height, 8, 5)};
            const Frame wide = WithASecondLine(line);
            const auto picture = line.Picture(), expected = wide.SlowPicture();
            for (uint32_t i = 0; i < width * height * 3; ++i)
                ASSERT_EQ(picture[i], expected[width == 1 ? i / 3 * wide.width * 3 + i % 3 : i])
                    << kBayerTiles[pattern] << ", " << width << "x" << height;
        }
}

TEST(Interpolator, TheRecordsDepthRulesWhereSamplesCanHaveIt) {
    struct Case {
        int formatDepth;
        uint32_t depth;
        uint16_t most;
    };
    constexpr Case cases[] = {{8, 6, 63},    {8, 12, 255},           {8, 0, 255}, {12, 10, 1023}, {12, 16, 65535},
                              {12, 0, 4095}, {12, 4000000000, 65535}};
    for (const Case& c : cases) {
        const BayerDepth depth = BayerDepthOf(c.formatDepth);
        const size_t rowBytes = 4 * depth.SampleSize();
        GuardedImage src(depth.patterns[1], 4, 4, rowBytes, rowBytes), dst(depth.rgb, 4, 4, 3 * rowBytes, 3 * rowBytes);
        src.SetPixels(std::vector<uint8_t>(4 * rowBytes, 255));
        src.Record().pixelDepth = c.depth;
        ASSERT_EQ(BayerToColor(&src.Record(), &dst.Record(), 1), 0u);
        EXPECT_EQ(WordsOf(dst.Pixels(), c.formatDepth), std::vector<uint16_t>(48, c.most)) << c.depth;
    }
}

TEST(Interpolator, ResultCodesOfTheClasses) {
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

TEST(Interpolator, AComponentGivesTheSameWhateverItConvertedBefore) {
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
