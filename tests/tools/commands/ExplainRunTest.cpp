#include <gtest/gtest.h>

#include "ToolRun.h"
#include "tools/look/FormatDrawing.h"

namespace kvx::tool {
namespace {

TEST(ExplainRun, DrawsTilesBitsAndNames) {
    const std::vector<std::pair<const char*, std::vector<const char*>>> cases = {
        {"BayerGB8", {"\n   G  B\n   R  G\n", "gbrg", "0x0108000A", "COLOR_BayerGR2BGR", "would swap red and blue"}},
        {"pgAA",
         {"BayerGR10mipi: ", "byte 4    d1   d0   c1   c0   b1   b0   a1   a0\n", "CFA_GR_BG_10mipi",
          "COLOR_BayerGR2BGR is for a BayerGB sensor"}},
        {"0x010C0059", {"byte 1    b3   b2   b1   b0  a11  a10   a9   a8\n", "0x030C2323  BayerRG12p\n"}},
        {"0x030C1324", {"BayerRG12Packed: ", "byte 1    b3   b2   b1   b0   a3   a2   a1   a0\n"}},
        {"Mono10msb", {"\n   Y\n", "byte 0    a1   a0    -    -    -    -    -    -\n"}},
        {"BayerRG12be", {"byte 0     -    -    -    -  a11  a10   a9   a8\n"}},
        {"TrueSense_RGGB_WRRW_0_8", {"\n   W  R  W  G\n   R  W  G  W\n   W  G  W  B\n   G  W  B  W\n", "SCF1WRWG8"}},
        {"BGRx", {"\n   B  G  R  X\n"}}};
    for (const auto& [format, fragments] : cases) {
        const std::string text = TextOf({"explain", format});
        for (const char* fragment : fragments) {
            EXPECT_NE(text.find(fragment), std::string::npos) << fragment << "\n" << text;
        }
        EXPECT_EQ(text.find('\033'), std::string::npos) << "colours without a terminal";
    }
    EXPECT_EQ(TextOf({"explain", "Mono8"}).find("OpenCV's"), std::string::npos);
    ExpectRefusal(RunTool({"explain", "0x01020304"}), 2, {"0x01020304", "code"});
}

TEST(FormatDrawing, ColoursFollowTheFilters) {
    const frame::Format format = frame::FormatByName("BayerGR12p");
    EXPECT_EQ(DrawTile(format, Paint(true)),
              "  \033[42;30m G \033[0m\033[41;97m R \033[0m\n  \033[44;97m B \033[0m\033[42;30m G \033[0m\n");
}

}  // namespace
}  // namespace kvx::tool
