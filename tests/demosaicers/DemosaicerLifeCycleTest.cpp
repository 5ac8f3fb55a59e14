// Refusals, reuse and threads of all TrueSense demosaicers.
#include <gtest/gtest.h>
#include <omp.h>

#include <climits>
#include <functional>

#include "demosaicers/denoising/TrueSenseKodak.h"
#include "demosaicers/denoising/TrueSenseKodakLike.h"
#include "demosaicers/denoising/TrueSenseSimple.h"
#include "demosaicers/interpolation/TrueSenseBayerLike.h"
#include "demosaicers/interpolation/TrueSenseToRgb.h"
#include "support/TrueSenseJobs.h"

namespace kvx::test {
namespace {

template <template <class> class T>
struct Class {
    template <class Sample>
    using Demosaicer = T<Sample>;
};

template <class Which>
class DemosaicerLifeCycle : public testing::Test {
protected:
    using Demosaicer = typename Which::template Demosaicer<uint16_t>;
    static Demosaicer Make() {
        return MakeDemosaicer<Demosaicer>(8);  // small frames have several bands
    }
    Demosaicer m_demosaicer = Make();
};
using Classes = testing::Types<Class<TrueSenseToRgb>, Class<TrueSenseBayerLike>, Class<TrueSenseSimple>,
                               Class<TrueSenseKodakLike>, Class<TrueSenseKodak>>;
TYPED_TEST_SUITE(DemosaicerLifeCycle, Classes);

/** The arguments of a legal call, each of which a test may spoil. */
struct Arguments {
    std::vector<uint16_t> source = std::vector<uint16_t>(30 * 20, 100), picture = std::vector<uint16_t>(30 * 20 * 3, 7);
    const uint16_t* src = source.data();
    uint16_t* dst = picture.data();
    _KvxRect roi{3, 2, 20, 10};
    _KvxSize size{30, 20};
    int srcLineStep = 60, pixelDepth = 12, dstLineStep = 120;
    unsigned char grid = 5;

    int Init(IDemConvertion<uint16_t>& demosaicer) {
        return demosaicer.Init(src, roi, size, srcLineStep, pixelDepth, dst, dstLineStep, grid, nullptr);
    }
};

TYPED_TEST(DemosaicerLifeCycle, RefusesWhatItCannotConvertAndWritesNothing) {
    const struct {
        const char* what;
        int result;
        std::function<void(Arguments&)> spoil;
    } cases[] = {
        {"null source", 8, [](Arguments& a) { a.src = nullptr; }},
        {"null destination", 8, [](Arguments& a) { a.dst = nullptr; }},
        {"grid", 7, [](Arguments& a) { a.grid = 16; }},
        {"depth below", 7, [](Arguments& a) { a.pixelDepth = 7; }},
        {"depth above", 7, [](Arguments& a) { a.pixelDepth = 17; }},
        {"region too wide", 7, [](Arguments& a) { a.roi.x = 11; }},
        {"region too low down", 7, [](Arguments& a) { a.roi.y = 11; }},
        {"region that wraps around", 7, [](Arguments& a) { a.roi.x = UINT_MAX - 5; }},
        {"empty region", 9, [](Arguments& a) { a.roi.width = 0; }},
        {"size past INT_MAX", 7, [](Arguments& a) { a.size.height = 0x80000000u; }},
        {"source rows that overlap", 7, [](Arguments& a) { a.srcLineStep = 59; }},
        {"the same, upwards", 7, [](Arguments& a) { a.srcLineStep = -59; }},
        {"destination rows that overlap", 7, [](Arguments& a) { a.dstLineStep = 119; }},
        {"the same, backwards", 7, [](Arguments& a) { a.dstLineStep = -119; }},
    };
    for (const auto& [what, result, spoil] : cases) {
        Arguments arguments;
        EXPECT_EQ(arguments.Init(this->m_demosaicer), 0);
        const auto before = arguments.picture;
        spoil(arguments);
        EXPECT_EQ(arguments.Init(this->m_demosaicer), result) << what;
        EXPECT_EQ(this->m_demosaicer.Calculate(), 7) << what;
        EXPECT_EQ(arguments.picture, before) << what;
    }
}

TEST(DemosaicerLifeCycle, OddDepthsAreRefusedByTheFastInterpolator) {
    TrueSenseToRgb<uint16_t> demosaicer;
    for (int depth = 8; depth <= 16; ++depth) {
        Arguments arguments;
        arguments.pixelDepth = depth;
        EXPECT_EQ(arguments.Init(demosaicer), depth % 2 == 0 ? 0 : 7) << depth;
    }
}

TYPED_TEST(DemosaicerLifeCycle, TheSecondCallOfAPairNeedsTheFirst) {
    EXPECT_EQ(this->m_demosaicer.Calculate(), 7);
    EXPECT_TRUE(this->m_demosaicer.IsThis(&this->m_demosaicer) && !this->m_demosaicer.IsThis(nullptr));
    Arguments arguments;
    ASSERT_EQ(arguments.Init(this->m_demosaicer), 0);
    EXPECT_EQ(this->m_demosaicer.CalculateRGB(), 7);
    EXPECT_EQ(this->m_demosaicer.Calculate(), 0);
    this->m_demosaicer.CleanMemory();
    EXPECT_EQ(this->m_demosaicer.Calculate(), 7);
}

TYPED_TEST(DemosaicerLifeCycle, TheOutputPixelTypeCountsWhenCalculating) {
    TrueSenseJob job{.width = 20, .height = 12, .grid = 6};
    TrueSenseRun late(job);
    job.withAlpha = job.blueFirst = true;
    job.resultPadding = 3;
    TrueSenseRun early(job);
    job.withAlpha = job.blueFirst = false;
    job.resultPadding = 23;  // as long as rows of four channels
    TrueSenseRun changed(job);
    IDemConvertion<uint16_t>* demosaicer = &this->m_demosaicer;
    ASSERT_EQ(early.Convert(demosaicer), 0);
    ASSERT_EQ(changed.Init(demosaicer), 0);
    demosaicer->SetOutputPixelType(true, true);
    ASSERT_EQ(demosaicer->CalculateRGB(), 0);
    EXPECT_EQ(changed.Result(), early.Result());
    ASSERT_EQ(late.Init(demosaicer), 0);
    demosaicer->SetOutputPixelType(true, false);
    EXPECT_EQ(demosaicer->CalculateRGB(), 7);  // rows of three channels
    EXPECT_TRUE(late.IsUntouched());
}

TYPED_TEST(DemosaicerLifeCycle, AnObjectUsedBeforeGivesWhatAFreshOneGives) {
    const int before = omp_get_max_threads();
    omp_set_num_threads(5);
    std::mt19937 random(4);
    for (unsigned i = 0; i < 40; ++i) {
        const int width = 8 + static_cast<int>(random() % 90), height = 1 + static_cast<int>(random() % 60);
        TrueSenseJob job = DrawJob(width, height, i % 16, random);
        job.sourceBytes = 2;
        TrueSenseRun fresh(job), again(job);
        auto other = TestFixture::Make();
        ASSERT_EQ(fresh.Convert(static_cast<IDemConvertion<uint16_t>*>(&other)), 0) << job;
        ASSERT_EQ(again.Convert(static_cast<IDemConvertion<uint16_t>*>(&this->m_demosaicer)), 0) << job;
        ASSERT_EQ(fresh.Result(), again.Result()) << job;
        ASSERT_EQ(omp_get_max_threads(), 5) << job;  // the caller's count
        if (job.seed % 8 == 0) this->m_demosaicer.CleanMemory();
    }
    omp_set_num_threads(before);
}

}  // namespace
}  // namespace kvx::test
