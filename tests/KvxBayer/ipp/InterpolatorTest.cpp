// The in-house interpolator gives its slow twin's picture to the bit, however it is cut and whatever computes it.
#include <gtest/gtest.h>
#include <omp.h>

#include "support/BayerFrames.h"
#include "support/BayerFunctions.h"
#include "support/InstructionSets.h"
#include "support/SlowInterpolator.h"

namespace kvx::test {
namespace {

constexpr const char* kPatterns[4] = {"GRBG", "RGGB", "BGGR", "GBRG"};  // in the order of BayerDepth::patterns

std::vector<uint16_t> WordsOf(const std::vector<uint8_t>& bytes, int depth) {
    if (depth == 8) return {bytes.begin(), bytes.end()};
    std::vector<uint16_t> words(bytes.size() / 2);
    std::memcpy(words.data(), bytes.data(), bytes.size());
    return words;
}

struct Frame {
    const BayerDepth& depth;
    int pattern;
    uint32_t width, height;
    std::vector<uint8_t> samples;

    std::vector<uint16_t> SlowPicture() const {
        return SlowInterpolator(WordsOf(samples, depth.depth), static_cast<int>(width), static_cast<int>(height),
                                depth.depth, kPatterns[pattern])
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

/** Noise, extremes, and a smooth scene with edges: flat areas, ramps, and a disc of another colour. */
std::vector<uint8_t> SceneSamples(uint32_t width, uint32_t height, int depth, int pattern) {
    std::vector<uint8_t> bytes;
    for (int y = 0; y < static_cast<int>(height); ++y)
        for (int x = 0; x < static_cast<int>(width); ++x) {
            const bool disc = (x - 20) * (x - 20) + (y - 12) * (y - 12) < 100;
            const char colour = kPatterns[pattern][(y & 1) * 2 + (x & 1)];
            const int value = disc ? (colour == 'R' ? 230 : 40) : x < 40 ? 90 : std::min(255, 4 * (x - 40) + y);
            const int sample = value << (depth - 8);
            bytes.push_back(static_cast<uint8_t>(sample));
            if (depth > 8) bytes.push_back(static_cast<uint8_t>(sample >> 8));
        }
    return bytes;
}

TEST(Interpolator, EqualsItsSlowTwinForEveryFormat) {
    constexpr uint32_t sizes[][2] = {{2, 2}, {3, 2}, {2, 5}, {5, 3}, {7, 6}, {33, 18}, {64, 41}};
    unsigned seed = 1;
    for (const BayerDepth& depth : kBayerDepths)
        for (int pattern = 0; pattern < 4; ++pattern)
            for (const auto& [width, height] : sizes) {
                SCOPED_TRACE(testing::Message()
                             << depth.depth << " bits, " << kPatterns[pattern] << ", " << width << "x" << height);
                const Fill fill = seed++ % 2 ? Fill::Noise : Fill::Extremes;
                for (const auto& samples : {MakeSamples(fill, width, height, depth.depth, seed),
                                            SceneSamples(width, height, depth.depth, pattern)}) {
                    const Frame frame{depth, pattern, width, height, samples};
                    const auto expected = frame.SlowPicture();
                    ASSERT_EQ(frame.Picture(), expected);
                    auto blueFirst = frame.Picture(true);
                    for (size_t i = 0; i < blueFirst.size(); i += 3) std::swap(blueFirst[i], blueFirst[i + 2]);
                    ASSERT_EQ(blueFirst, expected);
                }
            }
}

TEST(Interpolator, IsTheSameForEveryInstructionSetAndWidth) {
    for (const uint32_t width : {16, 23, 31, 70, 129}) {
        const Frame frame{kBayerDepths[2], 1, width, 20, MakeSamples(Fill::Noise, width, 20, 12, width)};
        const auto expected = frame.SlowPicture();
        ForEachInstructionSet([&] { ASSERT_EQ(frame.Picture(), expected); });
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
    omp_set_num_threads(before);
}

}  // namespace
}  // namespace kvx::test
