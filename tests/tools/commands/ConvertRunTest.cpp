#include <gtest/gtest.h>

#include "TemporaryDirectory.h"
#include "ToolRun.h"
#include "tools/files/Npy.h"
#include "tools/files/PictureDecoder.h"
#include "tools/files/PictureEncoder.h"
#include "tools/files/Pnm.h"
#include "tools/frames/Formats.h"
#include "tools/frames/Mosaic.h"

namespace kvx::tool {
namespace {

/** Noise: every sample matters, so a picture shows exactly how it was made. */
RawFrame NoiseFrame(const char* format) {
    cv::Mat picture(12, 16, CV_16UC1);
    cv::RNG(7).fill(picture, cv::RNG::UNIFORM, 0, 65536);
    return MakeMosaic({picture, 65535}, RequireFormat(format));
}

Bytes ConvertToPpm(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "convert");
    arguments.insert(arguments.begin() + 2, "-");
    return RunSuccessfully(arguments).standardOutput;
}

TEST(ConvertRun, EveryKindOfInputGivesTheSamePicture) {
    const TemporaryDirectory directory;
    const RawFrame frame = NoiseFrame("BayerGB12");
    const Bytes raw = EncodeRaw(frame.samples);
    const Bytes expected = ConvertToPpm({directory.Write("a_16x12_BayerGB12.raw", raw)});
    ASSERT_EQ(expected.size(), std::string("P6\n16 12\n255\n").size() + 16 * 12 * 3);

    Bytes padded(5, 0xEE);
    for (int row = 0; row < 12; ++row) {
        padded.insert(padded.end(), raw.begin() + row * 32, raw.begin() + (row + 1) * 32);
        padded.insert(padded.end(), 3, 0xEE);
    }
    EXPECT_EQ(ConvertToPpm({directory.Write("padded", padded), "--format", "BayerGB12", "--width", "16", "--height",
                            "12", "--stride", "35", "--skip-bytes", "5"}),
              expected);
    // The content counts, not the extension.
    const std::vector<std::pair<const char*, Bytes>> pictures = {
        {"a.raw", EncodePnm({frame.samples, 4095})},
        {"b.raw", EncodeNpy(frame.samples)},
        {"a_9x9.bin", EncodePicture({frame.samples, 65535}, PictureKind::Png)},
        {"a.png", EncodePicture({frame.samples, 65535}, PictureKind::Tiff)}};
    for (const auto& [name, content] : pictures) {
        EXPECT_EQ(ConvertToPpm({directory.Write(name, content), "--format", "BayerGB12"}), expected) << name;
    }
}

TEST(ConvertRun, PictureFilesHoldTheSamePixels) {
    const TemporaryDirectory directory;
    const std::string raw = directory.Write("a_16x12_BayerBG14.raw", EncodeRaw(NoiseFrame("BayerBG14").samples));
    for (const char* destination : {"RGB8", "BGR14", "RGB16"}) {
        const Picture expected = DecodePicture(ConvertToPpm({raw, "--to", destination}), destination);
        for (const char* name : {"a.png", "a.TIFF", "a.pnm", "a.npy"}) {
            RunSuccessfully({"convert", raw, directory.Path(name), "--to", destination});
            const Picture picture = DecodePicture(directory.Read(name), name);
            ASSERT_EQ(picture.pixels.type(), expected.pixels.type()) << name;
            EXPECT_EQ(EncodeRaw(picture.pixels), EncodeRaw(expected.pixels)) << name << " " << destination;
        }
    }
    // JPEG files are smaller, but similar.
    const auto jpegOf = [&](const char* quality) {
        RunSuccessfully({"convert", raw, directory.Path("a.jpg"), "--quality", quality});
        return DecodePicture(directory.Read("a.jpg"), "a.jpg").pixels;
    };
    const cv::Mat exact = DecodePicture(ConvertToPpm({raw}), "a").pixels;
    EXPECT_LT(cv::norm(jpegOf("100"), exact, cv::NORM_L1), cv::norm(jpegOf("30"), exact, cv::NORM_L1));
    // Channel order is the library's affair, the file shows the same colours.
    EXPECT_EQ(ConvertToPpm({raw, "--to", "RGB14"}), ConvertToPpm({raw, "--to", "BGR16"}));
    EXPECT_EQ(ConvertToPpm({raw, "--to", "RGB8"}), ConvertToPpm({raw, "--to", "BGR8"}));
}

TEST(ConvertRun, AlgorithmByOptionAndByParameter) {
    const TemporaryDirectory directory;
    const std::string raw = directory.Write("a_16x12_BayerRG12.raw", EncodeRaw(NoiseFrame("BayerRG12").samples));
    const auto convert = [&raw](std::vector<std::string> options) {
        options.insert(options.begin(), raw);
        return ConvertToPpm(options);
    };
    const Bytes bilinear = convert({});
    const Bytes edgeAware = convert({"--algorithm", "edge-aware"});
    EXPECT_NE(bilinear, edgeAware);
    EXPECT_EQ(convert({"--set", "BayerAlgType=1", "--set", "BayerAlgType=2"}), edgeAware);
    EXPECT_EQ(convert({"--set", "BayerAlgType=2", "--algorithm", "bilinear"}), bilinear);
    EXPECT_EQ(convert({"--algorithm", "3"}), bilinear);
    EXPECT_EQ(convert({"--threads", "1", "--set", "NoRealloc=1"}), bilinear);
}

}  // namespace
}  // namespace kvx::tool
