#include "tools/frames/Formats.h"

#include <gtest/gtest.h>

#include "ExpectToolError.h"
#include "tools/console/Arguments.h"

namespace kvx::tool {
namespace {

TEST(Formats, AreKnownByEverySchemeAndUnknownNamesBringTheNearest) {
    EXPECT_EQ(frame::Name(RequireFormat("rggb12le")), "BayerRG12");
    ExpectToolError(ExitCode::Usage, "did you mean Mono12,", [] { RequireFormat("MMono112"); });
    ExpectToolError(ExitCode::Usage, "no format of frames", [] { RequireFormat("YUV444_8"); });
}

TEST(Formats, FramesAndPicturesHaveTheirOwn) {
    EXPECT_EQ(RequireFrameFormat("--format", "BayerBG12Packed").layout, frame::Layout::GigE);
    for (const char* name : {"RGB8", "SCF1WBWG16"}) {
        ExpectToolError(ExitCode::Usage, "--format", [name] { RequireFrameFormat("--format", name); });
    }
    EXPECT_TRUE(IsConvertDestination(RequireFormat("BGR12")));
    EXPECT_FALSE(IsConvertDestination(RequireFormat("RGBa8")));
    EXPECT_FALSE(IsConvertDestination(RequireFormat("Mono8")));
}

TEST(Arguments, NumbersAreDecimalAndWhole) {
    EXPECT_EQ(ParseNumber("--width", "1920"), 1920u);
    EXPECT_EQ(ParseNumber("--width", "010"), 10u);
    EXPECT_EQ(ParseNumber("--width", "18446744073709551615"), UINT64_MAX);
    EXPECT_EQ(ParseNumber("--threads", "8", 8), 8u);
    for (const char* text : {"", "-1", "+1", " 1", "1 ", "0x10", "1e3", "1.0", "18446744073709551616", "eight"}) {
        ExpectToolError(ExitCode::Usage, "--width", [text] { ParseNumber("--width", text); });
    }
    ExpectToolError(ExitCode::Usage, "from 0 to 8", [] { ParseNumber("--threads", "9", 8); });
}

TEST(Arguments, WeightsAreThreeNumbersThatWeighSomething) {
    EXPECT_EQ(ParseWeights("--pan-weights", "0.3,0.6,0"), (std::array<double, 3>{0.3, 0.6, 0}));
    for (const char* text :
         {"", "1", "1,2", "1,2,", "1,2,3,4", "1,2,-3", "0,0,0", "1;2;3", "1,2,x", "nan,1,1", "inf,1,1"}) {
        ExpectToolError(ExitCode::Usage, "--pan-weights", [text] { ParseWeights("--pan-weights", text); });
    }
}

}  // namespace
}  // namespace kvx::tool
