#include "tools/frames/Mosaic.h"

#include <gtest/gtest.h>

#include <opencv2/imgcodecs.hpp>

#include "TemporaryDirectory.h"
#include "ToolRun.h"
#include "tools/files/PictureDecoder.h"
#include "tools/files/PictureEncoder.h"
#include "tools/frames/Formats.h"

namespace kvx::tool {
namespace {

TEST(Mosaic, AnAlphaChannelOfAPictureFileIsLeftOut) {
    Bytes file;
    cv::imencode(".png", cv::Mat(2, 3, CV_16UC4, cv::Scalar(100, 200, 300, 5)), file);
    const Picture picture = DecodePicture(file, "a.png");
    EXPECT_EQ(cv::norm(picture.pixels, cv::Mat(2, 3, CV_16UC3, cv::Scalar(100, 200, 300))), 0);
    EXPECT_EQ(picture.maximum, 65535u);
}

TEST(Mosaic, ToolAddsNoiseBySeed) {
    const TemporaryDirectory directory;
    const cv::Mat grey(8, 8, CV_8UC1, cv::Scalar(64));
    const std::string picture = directory.Write("grey.png", EncodePicture({grey, 255}, PictureKind::Png));
    const auto run = [&](std::vector<std::string> noise) {
        noise.insert(noise.begin(), {"mosaic", picture, "-", "--format", "TrueSense_BGGR_WBBW_0_12"});
        return RunSuccessfully(noise).standardOutput;
    };
    const auto expected = [&](uint64_t seed) {
        const frame::Sensor sensor{.noise = frame::NoiseAt(23.96), .noiseSeed = seed};
        return EncodeRaw(MakeMosaic({grey, 255}, RequireFormat("TrueSense_BGGR_WBBW_0_12"), sensor).samples);
    };
    EXPECT_EQ(run({"--analog-gain", "23.96"}), expected(1));
    EXPECT_EQ(run({"--analog-gain", "23.96", "--seed", "5"}), expected(5));
    EXPECT_EQ(run({}), EncodeRaw(cv::Mat(8, 8, CV_16UC1, cv::Scalar(1028))));
}

}  // namespace
}  // namespace kvx::tool
