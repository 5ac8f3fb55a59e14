// What a stream of TrueSense frames must not cost.
#include <gtest/gtest.h>

#include <climits>

#include "demosaicers/denoising/TrueSenseKodak.h"
#include "demosaicers/denoising/TrueSenseKodakLike.h"
#include "demosaicers/denoising/TrueSenseSimple.h"
#include "demosaicers/interpolation/TrueSenseBayerLike.h"
#include "demosaicers/interpolation/TrueSenseToRgb.h"
#include "support/CountedAllocations.h"
#include "support/TrueSenseJobs.h"

namespace kvx::test {
namespace {

/** A small frame, the largest one that a caller can name, of which nothing is touched, and the small one again. */
template <template <class> class Demosaicer>
void ExpectFrameBeyondMemoryRefused() {
    constexpr int width = 700000000, height = INT_MAX - 16;
    Demosaicer<uint8_t> demosaicer;
    TrueSenseRun before({.width = 20, .height = 9, .grid = 1, .sourceBytes = 1, .depth = 8}), after = before;
    ASSERT_EQ(before.Convert<uint8_t>(&demosaicer), 0);
    uint8_t sample = 0;
    tagTrueSenseParam params;
    TrueSense_DefaultValues(&params);
    const _KvxSize size{width, height};
    for (const int64_t threads : {INT64_MAX, int64_t{1}}) {
        params.threads_num = threads;
        EXPECT_EQ(demosaicer.Init(&sample, {0, 0, width, height}, size, width, 8, &sample, 3 * width, 15, &params), 9);
        EXPECT_EQ(demosaicer.Calculate(), 7);
    }
    ASSERT_EQ(after.Convert<uint8_t>(&demosaicer), 0);
    EXPECT_EQ(after.Result(), before.Result());
}

TEST(DemosaicerMemory, AFrameBeyondMemoryIsRefused) {
    ExpectFrameBeyondMemoryRefused<TrueSenseToRgb>();
    ExpectFrameBeyondMemoryRefused<TrueSenseBayerLike>();
    ExpectFrameBeyondMemoryRefused<TrueSenseSimple>();
    ExpectFrameBeyondMemoryRefused<TrueSenseKodakLike>();
    ExpectFrameBeyondMemoryRefused<TrueSenseKodak>();  // the reference's sum of sizes is an int32_t
}

TEST(DemosaicerMemory, DoesNotGrowWithTheHeightOfAFrame) {
    size_t bytes[2];
    for (const bool isHigh : {false, true}) {
        TrueSenseToRgb<uint16_t> demosaicer;
        TrueSenseRun run({.width = 640, .height = isHigh ? 6000 : 300, .grid = 9, .threads = 2});
        const size_t before = g_allocatedBytes;
        ASSERT_EQ(run.Convert<uint16_t>(&demosaicer), 0);
        bytes[isHigh] = g_allocatedBytes - before;
    }
    EXPECT_EQ(bytes[0], bytes[1]);
    EXPECT_LT(bytes[1], size_t{640 * 2 * 300});  // two threads, two rings of eight rows
}

}  // namespace
}  // namespace kvx::test
