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
    struct Case {
        int pictureType;
        uint32_t maximum;
        int value;
        const char* format;
        int sample;
    };
    const std::vector<Case> cases = {
        {CV_8UC1, 255, 255, "BayerRG12", 4095},  {CV_8UC1, 255, 128, "BayerRG10", 514},  // 513.5 rounded
        {CV_8UC3, 255, 127, "Mono8", 127},       {CV_16UC1, 65535, 65535, "BayerBG8", 255},
        {CV_16UC3, 65535, 128, "BayerGR8", 0},   {CV_16UC3, 65535, 129, "BayerGR8", 1},
        {CV_16UC1, 1023, 1023, "Mono16", 65535}, {CV_8UC3, 100, 50, "Mono14", 8192},  // 8191.5 rounded
    };
    for (const Case& expected : cases) {
        const Picture picture{cv::Mat(2, 2, expected.pictureType, cv::Scalar::all(expected.value)), expected.maximum};
        const RawFrame frame = MakeMosaic(picture, RequireFormat(expected.format));
        cv::Mat samples;
        frame.samples.convertTo(samples, CV_32S);
        EXPECT_EQ(cv::countNonZero(samples != expected.sample), 0) << expected.format << ": " << samples;
    }
}

TEST(Mosaic, AnAlphaChannelOfAPictureFileIsLeftOut) {
    Bytes file;
    cv::imencode(".png", cv::Mat(2, 3, CV_16UC4, cv::Scalar(100, 200, 300, 5)), file);
    const Picture picture = DecodePicture(file, "a.png");
    EXPECT_EQ(cv::norm(picture.pixels, cv::Mat(2, 3, CV_16UC3, cv::Scalar(100, 200, 300))), 0);
    EXPECT_EQ(picture.maximum, 65535u);
}

TEST(Mosaic, SensorsWeighClearSitesAndSeeLinearLight) {
    const Picture picture{cv::Mat(4, 4, CV_8UC3, cv::Scalar(0, 102, 204)), 255};
    const auto first = [&](const char* format, const frame::Sensor& sensor) {
        return MakeMosaic(picture, RequireFormat(format), sensor).samples.at<uint16_t>(0, 0);
    };
    EXPECT_EQ(first("TrueSense_BGGR_WBBW_0_12", {.panWeights = {3, 1, 0}}), 2867);  // 4095 x (3 x 0.8 + 0.4) / 4
    EXPECT_EQ(first("TrueSense_BGGR_WBBW_0_12", {.panWeights = {0, 0, 2}}), 0);
    EXPECT_EQ(first("BayerRG12", {.panWeights = {0, 0, 2}}), 3276);  // colour sites do not care
    EXPECT_EQ(first("BayerRG12", {.isLinear = true}), 2473);         // 0.8 in sRGB is 0.6038 of the light
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
