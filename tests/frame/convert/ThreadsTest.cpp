#include <gtest/gtest.h>
#include <omp.h>

#include <thread>

#include "frame/base/Team.h"
#include "frame/support/TestFrames.h"

namespace kvx::frame {
namespace {

std::vector<uint8_t> Converted(Converter& converter, const SourceView& source) {
    TestPicture picture(FormatByName("BGRa8"), source.width, source.height);
    converter.Convert(source, picture.View());
    EXPECT_TRUE(picture.Image().GuardsIntact());
    return picture.Image().Pixels();
}

TEST(ConverterThreads, ChangeNeitherPictureNorSetting) {
    for (const char* name : {"BayerGR12p", "SCF1WGWR10", "Mono14"}) {
        TestFrame frame = MakeNoise(FormatByName(name), 131, 77);
        for (const bool isFinished : {false, true}) {
            Converter reference(frame.view.format.family);
            if (isFinished) reference.SetFinish(EverythingOn());
            const auto expected = Converted(reference, frame.view);
            for (const int threads : {1, 2, 7}) {
                Converter converter(frame.view.format.family);
                if (isFinished) converter.SetFinish(EverythingOn());
                converter.SetThreads(threads);
                const int before = omp_get_max_threads();
                EXPECT_EQ(Converted(converter, frame.view), expected) << name << " " << threads;
                EXPECT_EQ(Converted(converter, frame.view), expected);  // used twice
                EXPECT_EQ(omp_get_max_threads(), before);
            }
        }
    }
}

TEST(ConverterThreads, AreNeverMoreThanTheWorkOrTheSystemAllows) {
    EXPECT_EQ(TeamSize(0, 8), 1);
    EXPECT_EQ(TeamSize(3, 8), 3);
    EXPECT_EQ(TeamSize(1 << 20, 8), 8);
    const int before = omp_get_max_threads();
    omp_set_num_threads(100'000);
    EXPECT_LE(TeamSize(1 << 20), std::max(64, 2 * omp_get_num_procs()));
    omp_set_num_threads(before);
}

TEST(ConverterThreads, OfTheirOwnDoNotMeet) {
    TestFrame frames[] = {MakeNoise(FormatByName("BayerGR12"), 64, 48), MakeNoise(FormatByName("SCF1WGWR12p"), 64, 48)};
    std::vector<std::thread> threads;
    for (const TestFrame& frame : frames)
        for (int copy = 0; copy < 2; ++copy)
            threads.emplace_back([&frame] {
                Converter converter(frame.view.format.family);
                converter.SetFinish(EverythingOn());
                const auto expected = Converted(converter, frame.view);
                for (int i = 0; i < 20; ++i) ASSERT_EQ(Converted(converter, frame.view), expected);
            });
    for (std::thread& thread : threads) thread.join();
}

}  // namespace
}  // namespace kvx::frame
