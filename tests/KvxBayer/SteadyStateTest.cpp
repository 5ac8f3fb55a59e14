// What a stream of frames must not cost, and what two streams must not do to each other.
#include <gtest/gtest.h>
#include <omp.h>

#include <thread>

#include "support/BayerFrames.h"
#include "support/BayerFunctions.h"
#include "support/CountedAllocations.h"

namespace kvx::test {
namespace {

struct Stream {
    const char* what;
    uint32_t srcType, dstType;
    int depth, algorithm;
    size_t dstSampleSize, padding;
};
constexpr Stream kStreams[] = {
    {"8 bits", KvxFormat_BayerRG8, KvxFormat_RGB8, 8, 0, 1, 0},
    {"12 bits", KvxFormat_BayerGR12, KvxFormat_BGR12, 12, 0, 2, 0},
    {"12 bits edge-aware", KvxFormat_BayerGR12, KvxFormat_BGR12, 12, 2, 2, 0},
    {"12 bits edge-aware, padded rows", KvxFormat_BayerGR12, KvxFormat_BGR12, 12, 2, 2, 10},
    {"12 bits to bytes", KvxFormat_BayerGR12, KvxFormat_RGB8, 12, 0, 1, 3},
};

class Camera {
public:
    explicit Camera(const Stream& stream, unsigned seed = 1)
        : m_samples(MakeSamples(Fill::Noise, 640, 480, stream.depth, seed)),
          m_src(MakeSource(stream.srcType, stream.depth, 640, 480, stream.padding, m_samples)),
          m_dst(stream.dstType, 640, 480, 1920 * stream.dstSampleSize, 1920 * stream.dstSampleSize + stream.padding) {
        KvxComponent_SetParamInt(KvxBayer_GetComponent(m_component), "BayerAlgType", stream.algorithm);
    }
    ~Camera() {
        KvxBayer_DeleteComponent(m_component);
    }
    uint32_t Frame() {
        return KvxBayer_ConvertImage(m_component, &m_src.Record(), &m_dst.Record());
    }
    std::vector<uint8_t> Picture() {
        return m_dst.Pixels();
    }

private:
    KvxBayer* m_component = KvxBayer_CreateComponent();
    std::vector<uint8_t> m_samples;
    GuardedImage m_src, m_dst;
};

TEST(SteadyState, NoAllocationAfterTheFirstFrame) {
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

TEST(SteadyState, TwoComponentsInTwoThreadsDoNotDisturbEachOther) {
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

TEST(SteadyState, TheCallersThreadCountStaysAsItWas) {
    const int before = omp_get_max_threads();
    for (const Stream& stream : kStreams) ASSERT_EQ(Camera(stream).Frame(), 0u);
    EXPECT_EQ(omp_get_max_threads(), before);
}

}  // namespace
}  // namespace kvx::test
