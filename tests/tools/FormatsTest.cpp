#include "tools/Formats.h"

#include <gtest/gtest.h>

#include "ExpectToolError.h"
#include "tools/Arguments.h"

namespace kvx::tool {
namespace {

TEST(Formats, UnknownNamesBringTheNearest) {
    const std::vector<std::pair<const char*, const char*>> cases = {
        {"BayerRG9", "BayerRG8"},       {"RGB24", "RGB"},
        {"Mono12Pack", "Mono12Packed"}, {"MMono112", "did you mean Mono12,"},
        {"", "did you mean"},
    };
    for (const auto& [name, suggestion] : cases) {
        ExpectToolError(ExitCode::Usage, suggestion, [name = name] { RequireFormat(name); });
    }
}

TEST(Formats, AreKnownByEveryScheme) {
    for (const char* name : {"bayerrg12", "rggb12le", "RG12", "CFA_RG_GB_12"}) {
        EXPECT_STREQ(RequireFormat(name).name, "BayerRG12") << name;
    }
    ExpectToolError(ExitCode::Usage, "no such format", [] { RequireFormat("pRCC"); });
}

TEST(Formats, OnlyUnpackedFormatsAreUsed) {
    struct Case {
        const char* name;
        bool isMosaic;
        bool isSource;
        bool isDestination;
    };
    const std::vector<Case> cases = {
        {"Mono16", true, false, false},
        {"Mono10p", false, false, false},
        {"BayerBG14", true, true, false},
        {"BayerBG12Packed", false, false, false},
        {"BayerGR10p", false, false, false},
        {"TrueSense_RGGB_WRRW_1_12", true, true, false},
        {"BGR12", false, false, true},
        {"RGBa8", false, false, false},
        {"RGB_8_FLEX_Packed", false, false, false},
        {"YUV444_8", false, false, false},
    };
    for (const Case& expected : cases) {
        const PixelFormat& format = RequireFormat(expected.name);
        EXPECT_EQ(IsUnpackedMosaic(format), expected.isMosaic) << expected.name;
        EXPECT_EQ(IsConvertSource(format), expected.isSource) << expected.name;
        EXPECT_EQ(IsConvertDestination(format), expected.isDestination) << expected.name;
    }
}

TEST(Formats, DepthsThatBecomeEachOther) {
    const std::vector<std::pair<const char*, std::string>> cases = {
        {"BayerRG8", "RGB8 BGR8 "},
        {"BayerRG10", "RGB8 BGR8 RGB10 BGR10 RGB16 BGR16 "},
        {"BayerRG14", "RGB8 BGR8 RGB14 BGR14 RGB16 BGR16 "},
        {"BayerRG16", "RGB8 BGR8 RGB16 BGR16 "},
    };
    for (const auto& [source, expected] : cases) {
        std::string possible;
        for (const PixelFormat* format : AllFormats()) {
            const bool isPossible = IsConvertDestination(*format) && CanConvert(RequireFormat(source), *format);
            possible += isPossible ? std::string(format->name) + " " : "";
        }
        EXPECT_EQ(possible, expected) << source;
    }
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
