// What a stream of frames must not cost: memory after its first frame.
#include <gtest/gtest.h>

#include <atomic>
#include <climits>
#include <cstdlib>
#include <new>

#include "support/BayerCamera.h"

namespace {
std::atomic<long> g_allocations{0};
}

// Counts every allocation with operator new in this program, the conversions' included.
void* operator new(size_t size) {
    ++g_allocations;
    if (void* memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, size_t) noexcept {
    std::free(memory);
}

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
