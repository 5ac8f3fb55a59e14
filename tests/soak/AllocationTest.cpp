// A stream of frames allocates nothing after its first frame, and a component keeps no more than it needs.
#include <gtest/gtest.h>
#include <malloc.h>

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

/** Bytes that malloc has given away, by itself and by mapping. */
size_t BytesInUse() {
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

TEST(Allocation, AComponentKeepsTheWorkingMemoryOfOneSampleWidth) {
    const Stream &bytes = kStreams[4], &words = kStreams[5];
    const auto kept = [](std::initializer_list<const Stream*> streams) {
        KvxBayer* component = KvxBayer_CreateComponent();
        KvxComponent_SetParamInt(KvxBayer_GetComponent(component), "BayerAlgType", KvxBayerAlgorithm_IPP);
        const size_t before = BytesInUse();
        for (const Stream* stream : streams) {
            GuardedImage src = MakeSource(stream->srcType, stream->depth, 64, 48, 0,
                                          MakeSamples(Fill::Noise, 64, 48, stream->depth, 1));
            GuardedImage dst(stream->dstType, 64, 48, 64 * 6, 64 * 6);
            EXPECT_EQ(KvxBayer_ConvertImage(component, &src.Record(), &dst.Record()), 0u);
        }
        const size_t after = BytesInUse();
        KvxBayer_DeleteComponent(component);
        return after - before;
    };
    kept({&bytes, &words});  // what the runtimes keep
    EXPECT_LT(kept({&bytes, &words}), kept({&words}) + 4096);
    EXPECT_LT(kept({&words, &bytes}), kept({&bytes}) + 4096);
}

}  // namespace
}  // namespace kvx::test
