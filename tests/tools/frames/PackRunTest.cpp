#include <gtest/gtest.h>

#include "TemporaryDirectory.h"
#include "ToolRun.h"

namespace kvx::tool {
namespace {

struct Case {
    const char* layout;
    const char* format;
    const char* width;
    Bytes words;
    Bytes packed;
};

TEST(PackRun, EveryLayoutThereAndBackThroughTheStandardStreams) {
    const Bytes twelve = {0xBC, 0x0A, 0x23, 0x01};
    const Bytes ten = {0xA5, 0x02, 0x3C, 0x01, 0xF0, 0x00, 0xFF, 0x03};
    const std::vector<Case> cases = {
        {"pfnc", "BayerRG12p", "2", twelve, {0xBC, 0x3A, 0x12}},
        {"gige", "BayerRG12Packed", "2", twelve, {0xAB, 0x3C, 0x12}},
        {"mipi", "pRCC", "2", twelve, {0xAB, 0x12, 0x3C}},
        {"msb", "BayerRG12msb", "2", twelve, {0xC0, 0xAB, 0x30, 0x12}},
        {"big-endian", "rggb12be", "2", twelve, {0x0A, 0xBC, 0x01, 0x23}},
        {"pfnc", "BayerRG10p", "4", ten, {0xA5, 0xF2, 0x04, 0xCF, 0xFF}},
        {"gige", "BayerRG10Packed", "4", ten, {0xA9, 0x01, 0x4F, 0x3C, 0x30, 0xFF}},
        {"mipi", "BayerRG10mipi", "4", ten, {0xA9, 0x4F, 0x3C, 0xFF, 0xC1}},
    };
    for (const Case& one : cases) {
        const std::string words = one.words.size() == 4 ? "BayerRG12" : "BayerRG10";
        const auto run = [&one](std::vector<std::string> arguments, const Bytes& input) {
            arguments.insert(arguments.end(), {"--width", one.width, "--height", "1"});
            return RunSuccessfully(arguments, {.standardInput = input}).standardOutput;
        };
        EXPECT_EQ(run({"pack", "-", "-", "--layout", one.layout, "--format", words}, one.words), one.packed)
            << one.format;
        EXPECT_EQ(run({"unpack", "-", "-", "--format", one.format}, one.packed), one.words) << one.format;
        // From each layout to another.
        EXPECT_EQ(run({"pack", "-", "-", "--layout", "pfnc", "--format", one.format}, one.packed),
                  one.words.size() == 4 ? cases[0].packed : cases[5].packed)
            << one.format;
    }
}

TEST(PackRun, PackedFramesBecomeTheSamePicture) {
    const TemporaryDirectory directory;
    Bytes words;
    for (int index = 0; index < 5 * 3; ++index) {
        words.insert(words.end(), {static_cast<uint8_t>(index * 91), static_cast<uint8_t>(index)});
    }
    const std::string plain = directory.Write("a_5x3_BayerGB12.raw", words);
    const Bytes expected = RunSuccessfully({"convert", plain, "-", "--to", "RGB16"}).standardOutput;
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
