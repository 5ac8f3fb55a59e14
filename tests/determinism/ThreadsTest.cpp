// Every algorithm gives the same bits on any number of threads, with any instruction set, next to any other.
#include <gtest/gtest.h>
#include <omp.h>

#include <thread>

#include "KvxDemosaicing/KvxTrueSenseFlat.h"
#include "support/Camera.h"
#include "support/InstructionSets.h"

namespace kvx::test {
namespace {

constexpr uint32_t kWidth = 301, kHeight = 530;  // tiles and bands for several threads, no whole vectors

TEST(Threads, NeitherTheirNumberNorTheInstructionSetChangesAPicture) {
    const int before = omp_get_max_threads();
    for (const Stream& stream : kStreams) {
        Camera camera(stream, 1, kWidth, kHeight);
        omp_set_num_threads(1);
        ASSERT_EQ(camera.Frame(), 0u) << stream.what;
        const uint32_t expected = camera.Hash();
        EXPECT_EQ(expected, stream.checksum) << stream.what;
        ForEachInstructionSet([&] {
            for (const int threads : {1, 2, 3, 8, 17}) {
                omp_set_num_threads(threads);
                Camera other(stream, 1, kWidth, kHeight);
                ASSERT_EQ(other.Frame(), 0u);
                ASSERT_EQ(other.Hash(), expected) << stream.what << ", " << threads << " threads";
                ASSERT_EQ(omp_get_max_threads(), threads) << "the caller's own count";
            }
        });
    }
    omp_set_num_threads(before);
}

/** Components, and flat functions with objects of their own, twice. */
TEST(Threads, AllAlgorithmsRunAtTheSameTime) {
    const auto convert = [](const Stream& stream, unsigned seed) {
        GuardedImage src = MakeSource(stream.srcType, stream.depth, kWidth, 60, 0,
                                      MakeSamples(Fill::Noise, kWidth, 60, stream.depth, seed));
        GuardedImage dst(stream.dstType, kWidth, 60, kWidth * 3 * stream.dstSampleSize, kWidth * 6);
        const bool isBayer = PixelTypeToTruesenseGrid(stream.srcType) == -1;
        EXPECT_EQ(isBayer ? BayerToColor(&src.Record(), &dst.Record(), stream.algorithm)
                          : TrueSenseToColor(&src.Record(), &dst.Record(), nullptr, stream.algorithm, true),
                  0u)
            << stream.what;
        return dst.Pixels();
    };
    std::vector<std::thread> threads;
    for (const Stream& stream : kStreams) {
        for (unsigned seed = 0; seed < 2; ++seed)
            threads.emplace_back([&, seed, expected = convert(stream, seed)] {
                for (int frame = 0; frame < 3; ++frame) EXPECT_EQ(convert(stream, seed), expected) << stream.what;
            });
        threads.emplace_back([&] {
            Camera camera(stream, 1, kWidth, kHeight);
            for (int frame = 0; frame < 3; ++frame) EXPECT_EQ(camera.Frame(), 0u);
            EXPECT_EQ(camera.Hash(), stream.checksum) << stream.what;
        });
    }
    for (std::thread& thread : threads) thread.join();
}

}  // namespace
}  // namespace kvx::test
