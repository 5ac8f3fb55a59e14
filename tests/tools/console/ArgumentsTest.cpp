#include "tools/console/Arguments.h"

#include <gtest/gtest.h>

#include "ExpectToolError.h"

namespace kvx::tool {
namespace {

TEST(Arguments, NumbersAreDecimalAndWhole) {
    EXPECT_EQ(ParseNumber("--width", "018446744073709551615"), UINT64_MAX);
    EXPECT_EQ(ParseNumber("--threads", "8", 8), 8u);
    for (const char* text : {"", "-1", "+1", " 1", "1 ", "0x10", "1e3", "1.0", "18446744073709551616", "eight"}) {
        ExpectToolError(ExitCode::Usage, "--width", [text] { ParseNumber("--width", text); });
    }
    ExpectToolError(ExitCode::Usage, "from 0 to 8", [] { ParseNumber("--threads", "9", 8); });
}

TEST(Arguments, WeightsAreThreeNumbersThatWeighSomething) {
    EXPECT_EQ(ParseWeights("--pan-weights", "0.3,0.6,0"), (std::array<double, 3>{0.3, 0.6, 0}));
    for (const char* text : {"", "1", "1,2", "1,2,", "1,2,3,4", "1,2,-3", "0,0,0", "1;2;3", "1,2,x", "nan,1,1",
                             "inf,1,1", "1e308,1e308,1e308"}) {
        ExpectToolError(ExitCode::Usage, "--pan-weights", [text] { ParseWeights("--pan-weights", text); });
    }
}

}  // namespace
}  // namespace kvx::tool
