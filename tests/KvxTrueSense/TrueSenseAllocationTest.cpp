// The component keeps its demosaicer from frame to frame, and gives it up when it must.
#include <gtest/gtest.h>

#include <cstdlib>

#include "KvxDemosaicing/KvxPixelFormat.h"
#include "KvxDemosaicing/KvxTrueSenseFlat.h"
#include "KvxTrueSense/KvxTrueSenseImp.h"
#include "demosaicers/denoising/TrueSenseKodakLike.h"
#include "support/BayerFrames.h"
#include "support/CountedAllocations.h"

namespace kvx::test {
namespace {

TEST(Allocation, OnlyTheSelectedDemosaicerHoldsMemory) {
    constexpr uint32_t width = 640, height = 480;
    constexpr long plane = long{width} * height;
    GuardedImage bytes = MakeSource(KvxFormat_TrueSense_BGGR_WBBW_0_8, 8, width, height, 0,
                                    MakeSamples(Fill::Noise, width, height, 8, 1));
    GuardedImage words = MakeSource(KvxFormat_TrueSense_BGGR_WBBW_0_12, 12, width, height, 0,
                                    MakeSamples(Fill::Noise, width, height, 12, 1));
    GuardedImage dst(KvxFormat_RGB8, width, height, width * 3, width * 3);
    const long atStart = g_liveBytes;
    const auto held = [&] { return g_liveBytes - atStart; };
    for (const int algorithm : {3, 0, 1, 4, 0}) {  // a flat function's own demosaicers
        ASSERT_EQ(TrueSenseToColor(&words.Record(), &dst.Record(), nullptr, algorithm, 0), 0u);
        EXPECT_EQ(held() > 2 * plane, algorithm != 0) << algorithm << " holds " << held();
    }
    const long flat = held();
    KvxTrueSense* component = KvxTrueSense_CreateComponent();
    KvxComponent_SetParamInt(KvxTrueSense_GetComponent(component), "TrueSenseAlgType", 3);
    ASSERT_EQ(KvxTrueSense_ConvertImage(component, &words.Record(), &dst.Record()), 0u);
    const long one = held() - flat;
    for (GuardedImage* src : {&bytes, &words}) {  // the other width's goes
        ASSERT_EQ(KvxTrueSense_ConvertImage(component, &src->Record(), &dst.Record()), 0u);
        EXPECT_LT(std::abs(held() - flat - one), plane);
    }
    KvxComponentImp* deletedThroughItsSlot = static_cast<KvxTrueSenseImp*>(component);
    delete deletedThroughItsSlot;
    EXPECT_EQ(held(), flat);
    for (const int half : {0, 1}) {  // a demosaicer goes through either interface
        auto* demosaicer = new TrueSenseKodakLike<unsigned short>();
        if (half)
            delete static_cast<IDemosaicing*>(demosaicer);
        else
            delete static_cast<IDemConvertion<unsigned short>*>(demosaicer);
    }
    EXPECT_EQ(held(), flat);
}

}  // namespace
}  // namespace kvx::test
