#include <fmt/format.h>
#include <gtest/gtest.h>

#include <opencv2/core.hpp>

#include "TemporaryDirectory.h"
#include "ToolRun.h"
#include "tools/files/PictureEncoder.h"
#include "tools/files/Pnm.h"

namespace kvx::tool {
namespace {

/** A directory with inputs of every kind; runs in it must fail with one line and leave no files. */
class RefusalRun : public testing::Test {
protected:
    RefusalRun() {
        m_directory.Write("ok_4x4_BayerRG8.raw", Bytes(16, 1));
        m_directory.Write("short_4x4_BayerRG12.raw", Bytes(31, 1));
        m_directory.Write("deep_4x4_BayerRG12.raw", Bytes(32, 0xFF));
        m_directory.Write("packed_4x4_BayerRG12Packed.raw", Bytes(24, 1));
        m_directory.Write("empty.raw", {});
        const cv::Mat grey(64, 64, CV_8UC1, cv::Scalar(5));
        m_directory.Write("grey.pgm", EncodePnm({grey, 255}));
        Bytes png = EncodePicture({cv::Mat(64, 64, CV_8UC3, cv::Scalar(1, 2, 3)), 255}, PictureKind::Png);
        m_directory.Write("colour.png", png);
        png.resize(png.size() / 2);
        m_directory.Write("cut.png", png);
        for (const char* name : {"nested", "vast", "huge"}) {
            m_directory.Write(name + std::string("_4x4_BayerRG8.raw"), Bytes(16, 1));
        }
        m_directory.WriteText("nested_4x4_BayerRG8.json",
                              R"({"width": )" + std::string(99'999, '[') + std::string(99'999, ']') + "}");
        constexpr uint64_t kFiveGiB = uint64_t{5} << 30;
        std::filesystem::resize_file(m_directory.Path("huge_4x4_BayerRG8.raw"), kFiveGiB);
        std::filesystem::resize_file(m_directory.Write("vast_4x4_BayerRG8.json", {}), kFiveGiB);
        m_entries = m_directory.Entries();
    }

    /** Words that are names of input files, or start with "out", become paths of the directory. */
    void Expect(int exitCode, std::vector<std::string> arguments, const std::vector<std::string>& fragments) {
        SCOPED_TRACE(fmt::format("{}", fmt::join(arguments, " ")));
        for (std::string& argument : arguments) {
            if (m_entries.contains(argument) || argument.starts_with("out")) {
                argument = m_directory.Path(argument);
            }
        }
        const ToolResult result = RunTool(arguments);
        ExpectRefusal(result, exitCode, fragments);
        EXPECT_LT(result.peakKilobytes, 1 << 20);
        EXPECT_EQ(m_directory.Entries(), m_entries);
    }

    TemporaryDirectory m_directory;
    std::set<std::string> m_entries;
};

TEST_F(RefusalRun, WrongUsage) {
    const std::string ok = "ok_4x4_BayerRG8.raw";
    Expect(2, {}, {"subcommand"});
    Expect(2, {"convert", ok}, {"OUT"});
    Expect(2, {"convert", ok, "out.png", "extra"}, {"--output"});
    Expect(2, {"convert", ok, "out.png", "--colour"}, {"--colour"});
    Expect(2, {"convert", ok, "out.bmp"}, {"out.bmp", ".png"});
    Expect(2, {"convert", ok, "out.jpg", "--to", "RGB16"}, {"JPEG", "8 bits"});
    Expect(2, {"convert", ok, "out.png", "--quality", "90"}, {"--quality", ".jpg"});
    Expect(2, {"convrt", ok, "out.png"}, {"no command convrt", "mean convert?"});
    Expect(2, {"calibrate", "chrt", ok}, {"no command chrt", "mean chart?"});
    Expect(2, {"convert", ok, "out.png", "--formt=BayerRG8"}, {"no option --formt:", "mean --format?"});
    Expect(2, {"convert", "grey.pgm", "out.png", "--format", "BayerRG8", "--frame", "0"}, {"grey.pgm", "one frame"});
    Expect(2, {"convert", ok, "out.png", "--threads", "-1"}, {"--threads", "'-1'"});
    Expect(2, {"convert", ok, "out.png", "--format", "BayerRG7"}, {"'BayerRG7'", "BayerRG8"});
    Expect(2, {"convert", ok, "out.png", "--format", "YUV444_8"}, {"YUV444_8", "neither frames nor"});
    Expect(2, {"convert", ok, "out.png", "--format", "RGB8"}, {ok, "RGB8"});
    Expect(2, {"convert", ok, "out.png", "--to", "RGBa8"}, {"RGBa8"});
    Expect(2, {"convert", ok, "out.png", "--algorithm", "5"}, {"'5'", "edge-aware"});
    Expect(2, {"convert", ok, "out.png", "--set", "NoRealloc"}, {"NoRealloc", "NAME=VALUE"});
    Expect(2, {"convert", ok, ok}, {ok});
    Expect(2, {"convert", ok, "grey.pgm", "--output", "out.png"}, {"--output", "{stem}"});
    Expect(2, {"convert", ok, "-", "--json"}, {"--json"});
    Expect(2, {"convert", ok, "out.png", "--white-balance", "daylight"}, {"daylight", "auto"});
    Expect(2, {"convert", ok, "out.png", "--white-balance", "sidecar"}, {ok, "no sidecar"});
    Expect(2, {"convert", ok, "out.png", "--white-balance", "0,1,1"}, {ok});
    Expect(2, {"convert", ok, "out.png", "--linear", "--tone", "srgb"}, {"--linear"});
    Expect(2, {"convert", ok, "out.png", "--white-balance", "auto", "--white-balance-from", "0,0,2,2"},
           {"one of them"});
    Expect(2, {"convert", ok, "out.png", "--white-balance-from", "0,0,1,1"}, {ok, "a grey place"});
    Expect(2, {"convert", ok, "out.png", "--black-level", "1,2,3"}, {"4 numbers"});
    Expect(2, {"convert", ok, "out.png", "--black-level", "255"}, {ok, "black level 255"});
    Expect(2, {"convert", ok, "out.png", "--tone", "film"}, {"--tone", "film", "linear, srgb"});
    Expect(2, {"pack", ok, "out.raw", "--layout", "pfnc"}, {"8 bits"});
    Expect(2, {"convert", "empty.raw", "out.png"}, {"empty.raw", "--format"});
    Expect(2, {"convert", "empty.raw", "out.png", "--format", "BayerRG8"}, {"empty.raw", "--width", "--height"});
    Expect(2, {"convert", "grey.pgm", "out.png", "--format", "BayerRG8", "--stride", "64"}, {"grey.pgm", "--stride"});
    Expect(2, {"mosaic", "colour.png", "out.raw"}, {"--format"});
    Expect(2, {"mosaic", "colour.png", "out.pgm", "--format", "BayerRG10p"}, {"BayerRG10p"});
    Expect(2, {"mosaic", "colour.png", "out.raw", "--format", "RGB8"}, {"--format RGB8"});
    Expect(2, {"mosaic", "colour.png", "colour.png", "--format", "BayerRG8"}, {"another name"});
    Expect(2, {"params", "foveon"}, {"foveon", "bayer", "truesense"});
    Expect(2, {"mosaic", "colour.png", "out.raw", "--format", "Mono8", "--pan-weights", "1e308,1e308,1e308"},
           {"--pan-weights", "1e308"});
    Expect(2, {"mosaic", "colour.png", "out.raw", "--format", "BayerRG8", "--analog-gain", "nan"},
           {"--analog-gain", "nan"});
    Expect(2, {"mosaic", "colour.png", "out.raw", "--format", "BayerRG8", "--seed", "3"}, {"--seed", "--analog-gain"});
}

TEST_F(RefusalRun, UnreadableInput) {
    Expect(3, {"convert", "missing\nfile.raw", "out.png"}, {"missing file.raw", "No such file"});
    Expect(3, {"convert", "/", "out.png", "--format", "BayerRG8"}, {"directory"});
    Expect(3, {"convert", "cut.png", "out.png", "--format", "BayerRG8"}, {"cut.png", "damaged"});
    Expect(3, {"convert", "colour.png", "out.png", "--format", "BayerRG8"}, {"colour.png", "mosaic"});
    Expect(3, {"mosaic", "empty.raw", "out.raw", "--format", "BayerRG8"}, {"empty.raw"});
    Expect(3, {"convert", "nested_4x4_BayerRG8.raw", "out.png"}, {"nested_4x4_BayerRG8.json", "levels"});
    Expect(3, {"convert", "vast_4x4_BayerRG8.raw", "out.png"}, {"vast_4x4_BayerRG8.json", "no sidecar is that large"});
    Expect(3, {"mosaic", "-", "out.raw", "--format", "BayerRG8"}, {"standard input"});
}

TEST_F(RefusalRun, FramesThatDoNotFit) {
    const std::string ok = "ok_4x4_BayerRG8.raw";
    Expect(4, {"convert", "short_4x4_BayerRG12.raw", "out.png"}, {"short_4x4", "holds 31 bytes", "need 32"});
    Expect(4, {"convert", "huge_4x4_BayerRG8.raw", "out.png"}, {"huge_4x4", "holds 5368709120 bytes", "try --frame 0"});
    Expect(4, {"convert", ok, "out.png", "--crop", "1,1,4,2"}, {"--crop", "not inside 4 x 4"});
    Expect(4, {"convert", "deep_4x4_BayerRG12.raw", "out.png"}, {"deep_4x4", "65535", "4095", "BayerRG16"});
    Expect(4, {"convert", "grey.pgm", "out.png", "--format", "BayerRG8", "--width", "63"}, {"grey.pgm", "64x64"});
    Expect(4, {"convert", "grey.pgm", "out.png", "--format", "BayerRG12"}, {"grey.pgm", "8-bit", "BayerRG12"});
}

TEST_F(RefusalRun, LibraryErrors) {
    const std::string ok = "ok_4x4_BayerRG8.raw";
    Expect(6, {"convert", ok, "out.png", "--set", "BayerAlgType=7"}, {"BayerAlgType=7", "0x80000004"});
    Expect(6, {"convert", ok, "out.png", "--set", "Gamma=1"}, {"Gamma=1", "0x80000002"});
}

}  // namespace
}  // namespace kvx::tool
