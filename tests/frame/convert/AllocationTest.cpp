#include <gtest/gtest.h>

#include "frame/support/TestFrames.h"
#include "support/CountedAllocations.h"

namespace kvx::frame {
namespace {

TEST(ConverterAllocations, EndWithTheFirstFrameOfAGeometry) {
    for (const char* name : {"BayerGR8", "BayerGR12", "BayerRG12p", "SCF1WBWG8", "TrueSense_GRBG_WGGW_2_12",
                             "CFA_BWGW_WGWR_GWRW_WBWG_12mipi", "Mono10"})
        for (const char* destination : {"RGB8", "BGRx", "RGB10", "BGR16", "RGBa16"})
            for (const char* algorithm : {"0", "1", "2"})
                for (const bool isFinished : {false, true}) {
                    const Format format = FormatByName(name);
                    // Of TrueSense's algorithms one is not there, and in the other OpenCV allocates.
                    const bool exists = format.family == Family::Bayer || *algorithm == '0';
                    if (!exists) continue;
                    Converter converter(format.family);
                    if (format.family != Family::Mono) converter.SetAlgorithm(algorithm);
                    if (isFinished) converter.SetFinish(EverythingOn());
                    TestFrame frame = MakeNoise(format, 64, 48);
                    TestPicture picture(FormatByName(destination), 64, 48);
                    const DestinationView view = picture.View();
                    converter.Convert(frame.view, view);
                    const long before = test::g_allocations;
                    converter.Convert(frame.view, view);
                    EXPECT_EQ(test::g_allocations - before, 0)
                        << name << " to " << destination << ", algorithm " << algorithm << ", finish " << isFinished;
                }
}

}  // namespace
}  // namespace kvx::frame
