// The component keeps its demosaicer from frame to frame, and gives it up when it must.
#include <gtest/gtest.h>

#include <omp.h>

#include "KvxDemosaicing/KvxPixelFormat.h"
#include "KvxDemosaicing/KvxTrueSense.h"
#include "support/BayerFrames.h"
#include "support/CountedAllocations.h"

namespace kvx::test {
namespace {

TEST(Allocation, OnlyAnotherWidthOrAlgorithmMakesTheTrueSenseComponentAllocate) {
    constexpr uint32_t width = 64, height = 48;
    const int before = omp_get_max_threads();
    omp_set_num_threads(1);  // the runtime's own memory for a team does not count
    KvxTrueSense* component = KvxTrueSense_CreateComponent();
    KvxComponent* parameters = KvxTrueSense_GetComponent(component);
    GuardedImage bytes = MakeSource(KvxFormat_TrueSense_BGGR_WBBW_0_8, 8, width, height, 0,
                                    MakeSamples(Fill::Noise, width, height, 8, 1));
    GuardedImage words = MakeSource(KvxFormat_TrueSense_BGGR_WBBW_0_12, 12, width, height, 0,
                                    MakeSamples(Fill::Noise, width, height, 12, 1));
    GuardedImage dst(KvxFormat_RGB8, width, height, width * 3, width * 3);
    const auto allocationsOf = [&](GuardedImage& src) {
        const long counted = g_allocations;
        EXPECT_EQ(KvxTrueSense_ConvertImage(component, &src.Record(), &dst.Record()), 0u);
        return g_allocations - counted;
    };
    EXPECT_GT(allocationsOf(words), 0);
    EXPECT_EQ(allocationsOf(words), 0);
    EXPECT_GT(allocationsOf(bytes), 0);
    EXPECT_EQ(allocationsOf(bytes), 0);
    EXPECT_GT(allocationsOf(words), 0);  // the frame of bytes replaced it
    EXPECT_EQ(KvxComponent_SetParamInt(parameters, "TrueSenseAlgType", 2), 0u);
    EXPECT_GT(allocationsOf(words), 0);
    EXPECT_EQ(KvxComponent_SetParamInt(parameters, "TrueSenseAlgType", 0), 0u);
    EXPECT_EQ(KvxTrueSense_AllocData(component, &words.Record(), &dst.Record()), 0u);
    EXPECT_GT(allocationsOf(words), 0);  // its working memory, for this geometry
    EXPECT_EQ(allocationsOf(words), 0);
    KvxTrueSense_ReleaseData(component);
    EXPECT_GT(allocationsOf(words), 0);
    KvxTrueSense_DeleteComponent(component);
    omp_set_num_threads(before);
}

}  // namespace
}  // namespace kvx::test
