// What two streams of frames must not do to each other, nor to their program.
#include <gtest/gtest.h>
#include <omp.h>

#include <thread>

#include "support/Camera.h"

namespace kvx::test {
namespace {

TEST(Threads, TwoComponentsInTwoThreadsDoNotDisturbEachOther) {
    for (const Stream& first : kStreams)
        for (const Stream& second : kStreams) {
            Camera a(first, 2), b(second, 3), expectedA(first, 2), expectedB(second, 3);
            ASSERT_EQ(expectedA.Frame(), 0u);
            ASSERT_EQ(expectedB.Frame(), 0u);
            const auto run = [](Camera& camera) {
                for (int frame = 0; frame < 5; ++frame) EXPECT_EQ(camera.Frame(), 0u);
            };
            std::thread other(run, std::ref(b));
            run(a);
            other.join();
            EXPECT_EQ(a.Picture(), expectedA.Picture()) << first.what;
            EXPECT_EQ(b.Picture(), expectedB.Picture()) << second.what;
        }
}

TEST(Threads, TheCallersThreadCountStaysAsItWas) {
    const int before = omp_get_max_threads();
    for (const Stream& stream : kStreams) ASSERT_EQ(Camera(stream).Frame(), 0u);
    EXPECT_EQ(omp_get_max_threads(), before);
}

}  // namespace
}  // namespace kvx::test
