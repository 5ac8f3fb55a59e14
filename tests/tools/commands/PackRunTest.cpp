#include <gtest/gtest.h>

#include "TemporaryDirectory.h"
#include "ToolRun.h"

namespace kvx::tool {
namespace {

TEST(PackRun, EveryLayoutThereAndBackThroughTheStandardStreams) {
    const struct {
        const char *layout, *format;
        Bytes packed;
    } cases[] = {{"pfnc", "BayerRG12p", {0xBC, 0x3A, 0x12}},
                 {"gige", "BayerRG12Packed", {0xAB, 0x3C, 0x12}},
                 {"mipi", "pRCC", {0xAB, 0x12, 0x3C}},
                 {"msb", "BayerRG12msb", {0xC0, 0xAB, 0x30, 0x12}},
                 {"big-endian", "rggb12be", {0x0A, 0xBC, 0x01, 0x23}}};
    const Bytes words = {0xBC, 0x0A, 0x23, 0x01};
    const auto run = [](std::vector<std::string> arguments, const Bytes& input) {
        arguments.insert(arguments.end(), {"-", "-", "--width", "2", "--height", "1"});
        return RunSuccessfully(arguments, {.standardInput = input}).standardOutput;
    };
    for (const auto& [layout, format, packed] : cases) {
        SCOPED_TRACE(format);
        EXPECT_EQ(run({"pack", "--layout", layout, "--format", "BayerRG12"}, words), packed);
        EXPECT_EQ(run({"unpack", "--format", format}, packed), words);
        EXPECT_EQ(run({"pack", "--layout", "pfnc", "--format", format}, packed), cases[0].packed);
    }
}

TEST(PackRun, PackedFramesBecomeTheSamePicture) {
    const TemporaryDirectory directory;
    Bytes words;
    for (int index = 0; index < 5 * 3; ++index) {
        words.insert(words.end(), {static_cast<uint8_t>(index * 91), static_cast<uint8_t>(index)});
    }
    const std::string dense = directory.Write("dense_5x3_BayerGB12.raw", words);
    const Bytes expected = RunSuccessfully({"convert", dense, "-", "--to", "RGB16"}).standardOutput;
    // The layout of the source is not that of what is written.
    const std::string plain = directory.Write("a_5x3_BayerGB12.raw", Bytes(7));
    std::ofstream file(plain, std::ios::app | std::ios::binary);
    for (int row = 0; row < 3; ++row) {
        file.write(reinterpret_cast<const char*>(words.data()) + row * 10, 10) << "??";
    }
    file.close();
    std::ofstream(plain + ".json") << R"({"offset": 7, "stride": 12})";
    const std::string packed = directory.Path("b");
    for (const char* padding : {"", "--image-padding"}) {
        std::vector<std::string> arguments = {"pack", plain, packed, "--layout", "pfnc", padding};
        arguments.resize(*padding == '\0' ? 5 : 6);
        RunSuccessfully(arguments);
        EXPECT_EQ(directory.Read("b").size(), *padding == '\0' ? 24u : 23u);
        EXPECT_EQ(RunSuccessfully({"convert", packed, "-", "--to", "RGB16"}).standardOutput, expected) << padding;
    }
}

}  // namespace
}  // namespace kvx::tool
