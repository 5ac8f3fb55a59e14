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
        if (stream.algorithm == 2 && PixelTypeToTruesenseGrid(stream.srcType) != -1) continue;  // OpenCV allocates
        Camera camera(stream);
        ASSERT_EQ(camera.Frame(), 0u);
        // The image-processing library's thread pool allocates now and then: the frame without any is the one that
        // tells about our code.
        long fewest = LONG_MAX;
        for (int frame = 0; frame < 20 && fewest > 0; ++frame) {
            const long before = g_allocations;
            ASSERT_EQ(camera.Frame(), 0u);
            fewest = std::min(fewest, g_allocations - before);
        }
        EXPECT_EQ(fewest, 0) << stream.what;
    }
}

TEST(Allocation, ARefusedSourceReleasesNothing) {
    KvxBayer* component = KvxBayer_CreateComponent();
    KvxComponent_SetParamInt(KvxBayer_GetComponent(component), "BayerAlgType", KvxBayerAlgorithm_IPP);
    GuardedImage src = MakeSource(KvxFormat_BayerRG8, 8, 8, 6, 0, MakeSamples(Fill::Noise, 8, 6, 8, 1));
    GuardedImage dst(KvxFormat_RGB8, 8, 6, 24, 24);
    EXPECT_EQ(KvxBayer_ConvertImage(component, &src.Record(), &dst.Record()), 0u);
    GuardedImage mono = MakeSource(KvxFormat_Mono8, 8, 8, 6, 0, MakeSamples(Fill::Noise, 8, 6, 8, 1));
    const long before = g_allocations;
    EXPECT_EQ(KvxBayer_AllocData(component, &mono.Record(), &dst.Record()), 0x80050007u);
    EXPECT_EQ(KvxBayer_ConvertImage(component, &src.Record(), &dst.Record()), 0u);
    EXPECT_EQ(g_allocations, before);
    KvxBayer_DeleteComponent(component);
}

}  // namespace
}  // namespace kvx::test
