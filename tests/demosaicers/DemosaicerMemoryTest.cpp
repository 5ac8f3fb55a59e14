// What a stream of TrueSense frames must not cost.
#include <gtest/gtest.h>

#include "demosaicers/TrueSenseToRgb.h"
#include "support/CountedAllocations.h"
#include "support/TrueSenseJobs.h"

namespace kvx::test {
namespace {

TEST(DemosaicerMemory, NothingIsAllocatedAfterTheFirstFrame) {
    TrueSenseToRgb<uint16_t> demosaicer;
    TrueSenseRun run({.width = 640, .height = 300, .grid = 9, .matrix = 1, .threads = 2, .bandRows = 32});
    ASSERT_EQ(run.Convert<uint16_t>(&demosaicer), 0);
    const long before = g_allocations;
    for (int frame = 0; frame < 5; ++frame) ASSERT_EQ(run.Convert<uint16_t>(&demosaicer), 0);
    EXPECT_EQ(g_allocations, before);
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
