// What a stream of frames must not cost: memory after its first frame.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>

#include "support/Camera.h"
#include "support/CountedAllocations.h"

namespace kvx::test {
namespace {

TEST(Allocation, NoneAfterTheFirstFrame) {
    for (const Stream& stream : kStreams) {
        Camera camera(stream);
        ASSERT_EQ(camera.Frame(), 0u);
        // The image-processing library's thread pool allocates now and then: the frame without any is the one that
        // tells about our code.
        long fewest = LONG_MAX;
        for (int frame = 0; frame < 20; ++frame) {
            const long before = g_allocations;
            ASSERT_EQ(camera.Frame(), 0u);
            fewest = std::min(fewest, g_allocations - before);
        }
        EXPECT_EQ(fewest, 0) << stream.what;
    }
}

}  // namespace
}  // namespace kvx::test
