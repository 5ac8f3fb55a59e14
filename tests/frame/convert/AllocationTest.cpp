#include <gtest/gtest.h>

#include "frame/support/TestFrames.h"
#include "support/CountedAllocations.h"

namespace kvx::frame {
namespace {

TEST(ConverterAllocations, EndWithTheFirstFrameOfAGeometry) {
    for (const char* name : {"BayerGR8", "BayerRG12p", "SCF1WBWG8", "CFA_BWGW_WGWR_GWRW_WBWG_12mipi", "Mono10"})
        for (const char* destination : {"BGRx", "RGB10", "RGBa16"})
            for (const bool isFinished : {false, true})
                for (const char* algorithm : {"0", "fine", "swift"}) {
                    Converter converter(FormatByName(name).family);
                    if (converter.SourceFamily() != Family::Mono) converter.SetAlgorithm(algorithm);
                    if (isFinished) converter.SetFinish(EverythingOn());
                    if (isFinished) converter.SetDefects(Defects::Auto);
                    TestFrame frame = MakeNoise(FormatByName(name), 64, 48);
                    TestPicture picture(FormatByName(destination), 64, 48);
                    const DestinationView view = picture.View();
                    converter.Convert(frame.view, view);
                    const long before = test::g_allocations;
                    converter.Convert(frame.view, view);
                    EXPECT_EQ(test::g_allocations - before, 0)
                        << name << " to " << destination << " " << algorithm << " " << isFinished;
                }
}

}  // namespace
}  // namespace kvx::frame
