// A stream of frames allocates nothing after its first frame.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>

#include "support/Camera.h"
#include "support/CountedAllocations.h"

namespace kvx::test {
namespace {

TEST(Allocation, NoneAfterTheFirstFrame) {
    for (const Stream& stream : kStreams) {
        if (stream.algorithm == 2 && PixelTypeToTruesenseGrid(stream.srcType) != -1) continue;  // OpenCV allocates
        Camera camera(stream);
        ASSERT_EQ(camera.Frame(), 0u);
        // OpenCV's thread pool allocates now and then: the frame with the fewest allocations counts.
        long fewest = LONG_MAX;
        for (int frame = 0; frame < 20 && fewest > 0; ++frame) {
            const long before = g_allocations;
            ASSERT_EQ(camera.Frame(), 0u);
            fewest = std::min(fewest, g_allocations - before);
        }
        EXPECT_EQ(fewest, 0) << stream.what;
    }
}

}  // namespace
}  // namespace kvx::test
