// Each allocation of a conversion fails once, by itself and together with all later ones. The result is the documented
// code, the destination is unchanged, nothing leaks, and the object still converts afterwards.
#include <gtest/gtest.h>
#include <omp.h>

#include <climits>
#include <functional>

#include "KvxDemosaicing/KvxTrueSenseFlat.h"
#include "support/BayerFrames.h"
#include "support/FailingMemory.h"

namespace kvx::test {
namespace {

constexpr uint32_t kWidth = 40, kHeight = 260;  // bands and tiles for two threads
constexpr uint32_t kBayerNoMemory = 0x80050009, kTrueSenseNoMemory = 0x80060009;

class ConversionMemory : public testing::Test {
protected:
    ConversionMemory() {
        omp_set_num_threads(2);
    }
    ~ConversionMemory() override {
        omp_set_num_threads(m_threads);
    }

    static GuardedImage Source(uint32_t format, int depth) {
        return MakeSource(format, depth, kWidth, kHeight, 0, MakeSamples(Fill::Noise, kWidth, kHeight, depth, 1));
    }
    static GuardedImage Destination(uint32_t format, size_t sampleSize) {
        return {format, kWidth, kHeight, kWidth * 3 * sampleSize, kWidth * 3 * sampleSize + 4};
    }

    /** A call that converts into an image; `prepare` makes it allocate again, `release` gives back what it holds. */
    struct Conversion {
        std::function<uint32_t(GuardedImage&)> convert;
        std::function<void()> prepare, release = [] {};
        uint32_t noMemory;
        long mayKeep, atLeast;  // blocks that it keeps; allocations
    };

    /** Fails every allocation, by itself and with all after it, until none is left. */
    static void FailEach(const Conversion& conversion, GuardedImage expected) {
        const auto& [convert, prepare, release, noMemory, mayKeep, atLeast] = conversion;
        for (int warmUp = 0; warmUp < 2; ++warmUp) {  // what OpenMP keeps is not ours
            prepare();
            ASSERT_EQ(convert(expected), 0u);
            release();
        }
        GuardedImage dst = expected.Fresh();
        const auto before = dst.Pixels(), wanted = expected.Pixels();
        for (const long count : {1L, LONG_MAX}) {
            long first = 0;
            for (long failed = 1; failed > 0 && !HasFailure(); ++first) {
                dst.SetPixels(before);
                prepare();
                FailAllocations(first, count);
                const uint32_t result = convert(dst);
                failed = StopFailing();
                EXPECT_TRUE(result == 0 || (failed && result == noMemory)) << std::hex << result;
                EXPECT_TRUE(result == 0 ? dst.Pixels() == wanted : dst.Untouched());
                EXPECT_EQ(convert(dst), 0u) << "once there is memory";
                EXPECT_TRUE(dst.GuardsIntact() && dst.Pixels() == wanted);
                release();
                EXPECT_LE(LeakedBlocks(), mayKeep);
                if (HasFailure()) ADD_FAILURE() << "allocations " << first << " on";
            }
            EXPECT_GT(first, atLeast) << "allocations";
        }
    }

    template <class Component>
    static void LifeCycle(uint32_t srcFormat, int depth, uint32_t dstFormat, size_t sampleSize, int algorithm) {
        SCOPED_TRACE(algorithm);
        constexpr bool isBayer = std::is_same_v<Component, KvxBayer>;
        constexpr uint32_t noMemory = isBayer ? kBayerNoMemory : kTrueSenseNoMemory;
        GuardedImage src = Source(srcFormat, depth);
        Component* component = nullptr;
        const auto convert = [&](GuardedImage& dst) -> uint32_t {
            if (!component) {
                component = Component::CreateComponent();
                if (!component) return noMemory;
                KvxComponent* parameters = component->GetComponent();
                EXPECT_EQ(KvxComponent_GetParamCount(parameters), isBayer ? 2u : 66u);
                const char* name = isBayer ? "BayerAlgType" : "TrueSenseAlgType";
                EXPECT_EQ(KvxComponent_SetParamInt(parameters, name, algorithm), 0u);
                const uint32_t allocated = component->AllocData(&src.Record(), &dst.Record());
                EXPECT_TRUE(allocated == 0 || allocated == noMemory) << std::hex << allocated;
            }
            if constexpr (isBayer)
                return KvxBayer_ConvertImage(component, &src.Record(), &dst.Record());
            else
                return KvxTrueSense_ConvertImage(component, &src.Record(), &dst.Record());
        };
        const auto release = [&] {
            Component::DeleteComponent(component);
            component = nullptr;
        };
        FailEach({convert, [] {}, release, noMemory, 0, 2}, Destination(dstFormat, sampleSize));
    }

private:
    int m_threads = omp_get_max_threads();
};

constexpr int kTrueSenseAlgorithms[] = {KvxTrueSenseAlgorithm_Fast, KvxTrueSenseAlgorithm_Simple,
                                        KvxTrueSenseAlgorithm_BayerLike, KvxTrueSenseAlgorithm_KodakLike,
                                        KvxTrueSenseAlgorithm_Kodak};

TEST_F(ConversionMemory, OfBayerComponents) {
    for (const int algorithm : {0, 1, 2}) {
        LifeCycle<KvxBayer>(KvxFormat_BayerRG8, 8, KvxFormat_RGB8, 1, algorithm);
        LifeCycle<KvxBayer>(KvxFormat_BayerGR12, 12, KvxFormat_BGR12, 2, algorithm);
        LifeCycle<KvxBayer>(KvxFormat_BayerGR12, 12, KvxFormat_RGB8, 1, algorithm);
    }
}

TEST_F(ConversionMemory, OfTrueSenseComponents) {
    for (const int algorithm : kTrueSenseAlgorithms) {
        LifeCycle<KvxTrueSense>(KvxFormat_TrueSense_BGGR_WBBW_0_8, 8, KvxFormat_RGB8, 1, algorithm);
        LifeCycle<KvxTrueSense>(KvxFormat_TrueSense_BGGR_WBBW_1_12, 12, KvxFormat_BGR12, 2, algorithm);
        LifeCycle<KvxTrueSense>(KvxFormat_TrueSense_BGGR_WBBW_1_12, 12, KvxFormat_RGB8, 1, algorithm);
    }
}

TEST_F(ConversionMemory, OfFlatBayerFunctions) {
    for (const int algorithm : {0, 1, 2}) {
        GuardedImage src = Source(KvxFormat_BayerGB12, 12);
        const auto convert = [&](GuardedImage& dst) { return BayerToColor(&src.Record(), &dst.Record(), algorithm); };
        const long atLeast = algorithm == 1 ? 2 : 0;
        const Conversion conversion{convert, [] {}, [] {}, kBayerNoMemory, 0, atLeast};
        FailEach(conversion, Destination(KvxFormat_RGB12, 2));
        FailEach(conversion, Destination(KvxFormat_RGB8, 1));
    }
}

TEST_F(ConversionMemory, OfTheCopyOfASourceThatOverlaps) {
    const auto convert = [](GuardedImage src, uint32_t noMemory, const auto& call) {
        GuardedImage apart = Destination(KvxFormat_RGB8, 1), dst = apart.Fresh();
        ASSERT_EQ(call(src, apart), 0u);  // makes what the function keeps
        src.Record().data = dst.Row(1);
        FailAllocations(0, LONG_MAX);
        const uint32_t result = call(src, dst);
        StopFailing();
        EXPECT_EQ(result, noMemory);
        EXPECT_TRUE(dst.Untouched());
        EXPECT_EQ(call(src, dst), 0u);
        EXPECT_EQ(LeakedBlocks(), 0);
    };
    for (const int algorithm : {0, 1, 2})
        convert(Source(KvxFormat_BayerGB12, 12), kBayerNoMemory, [=](GuardedImage& src, GuardedImage& dst) {
            return BayerToColor(&src.Record(), &dst.Record(), algorithm);
        });
    for (const int algorithm : kTrueSenseAlgorithms)
        convert(Source(KvxFormat_TrueSense_BGGR_WBBW_2_12, 12), kTrueSenseNoMemory,
                [=](GuardedImage& src, GuardedImage& dst) {
                    return TrueSenseToColor(&src.Record(), &dst.Record(), nullptr, algorithm, false);
                });
}

TEST_F(ConversionMemory, OfFlatTrueSenseFunctions) {
    GuardedImage src = Source(KvxFormat_TrueSense_BGGR_WBBW_2_12, 12);
    GuardedImage small =
        MakeSource(KvxFormat_TrueSense_BGGR_WBBW_2_12, 12, 20, 8, 0, MakeSamples(Fill::Noise, 20, 8, 12, 1));
    for (const int algorithm : kTrueSenseAlgorithms)
        for (const bool temporary : {true, false}) {
            const auto convert = [&](GuardedImage& dst) {
                return TrueSenseToColor(&src.Record(), &dst.Record(), nullptr, algorithm, temporary);
            };
            const auto convertSmallOne = [&] {  // the function's own object releases what the other frame needs
                GuardedImage dst(KvxFormat_RGB12, 20, 8, 20 * 6, 20 * 6);
                EXPECT_EQ(TrueSenseToColor(&small.Record(), &dst.Record(), nullptr, algorithm, temporary), 0u);
            };
            FailEach({convert, convertSmallOne, [] {}, kTrueSenseNoMemory, temporary ? 0 : LONG_MAX, 1},
                     Destination(KvxFormat_RGB12, 2));
        }
}

}  // namespace
}  // namespace kvx::test
