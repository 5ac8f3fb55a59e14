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

TEST(Mosaic, ScalesFromAnyWhiteToTheFormatsOwn) {
    const auto sample = [](int type, uint32_t white, int value, const char* format) {
        const Picture picture{cv::Mat(2, 2, type, cv::Scalar::all(value)), white};
        return cv::mean(MakeMosaic(picture, RequireFormat(format)).samples)[0];
    };
    EXPECT_EQ(sample(CV_8UC1, 255, 255, "BayerRG12"), 4095);
    EXPECT_EQ(sample(CV_16UC3, 65535, 129, "BayerGR8"), 1);
    EXPECT_EQ(sample(CV_16UC1, 1023, 1023, "Mono16"), 65535);
    EXPECT_EQ(sample(CV_8UC3, 100, 50, "Mono14"), 8192);  // 8191.5 rounded
}

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
