#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "TemporaryDirectory.h"
#include "ToolRun.h"
#include "tools/files/PictureDecoder.h"
#include "tools/files/PictureEncoder.h"

namespace kvx::tool {
namespace {

/** Soft waves of a period of their own in each channel: a wrong colour or a shifted pattern shows at once. */
Picture DrawWaves() {
    cv::Mat pixels(96, 128, CV_16UC3);
    for (int row = 0; row < pixels.rows; ++row) {
        for (int column = 0; column < pixels.cols; ++column) {
            const auto wave = [](double position) {
                return static_cast<uint16_t>(32767 + 30000 * std::sin(2 * std::numbers::pi * position));
            };
            pixels.at<cv::Vec3w>(row, column) = {wave(column / 70.0), wave(row / 60.0), wave((row - column) / 90.0)};
        }
    }
    return {pixels, 65535};
}

/** Decibels over the picture but for the two rows and columns at each edge, where fewer neighbours are known. */
double SignalToNoise(const cv::Mat& picture, const cv::Mat& original) {
    const auto share = [](const cv::Mat& pixels) {
        cv::Mat scaled;
        pixels(cv::Rect(2, 2, pixels.cols - 4, pixels.rows - 4))
            .convertTo(scaled, CV_64F, pixels.depth() == CV_8U ? 1 / 255.0 : 1 / 65535.0);
        return scaled;
    };
    return cv::PSNR(share(picture), share(original), 1.0);
}

TEST(RoundTrip, PictureToMosaicAndBackForEveryPatternAndDepth) {
    struct Case {
        std::string format, destination, algorithm;
        double decibels;
    };
    std::vector<Case> cases = {{"TrueSense_RGGB_WRRW_0_8", "RGB8", "fast", 38},
                               {"TrueSense_BGGR_WBBW_1_10", "BGR10", "bayer-like", 38},
                               {"TrueSense_GRBG_WGGW_2_12", "RGB8", "simple", 38},
                               {"TrueSense_GBRG_WGGW_3_14", "RGB16", "fast", 38}};
    for (const char* pattern : {"GR", "RG", "GB", "BG"}) {
        for (const int bits : {8, 10, 12, 14, 16}) {
            const std::string format = fmt::format("Bayer{}{}", pattern, bits);
            cases.push_back({format, "RGB8", "bilinear", 52});
            cases.push_back({format, fmt::format("BGR{}", bits), "edge-aware", 52});
        }
    }
    const TemporaryDirectory directory;
    const Picture waves = DrawWaves();
    const std::string picture = directory.Write("waves.png", EncodePicture(waves, PictureKind::Png));
    for (const Case& one : cases) {
        SCOPED_TRACE(one.format + " " + one.destination);
        const std::string raw = directory.Path(fmt::format("waves_128x96_{}.raw", one.format));
        EXPECT_EQ(RunSuccessfully({"mosaic", picture, raw, "--format", one.format}).standardError, "");
        const std::string out = directory.Path("again.png");
        std::vector<std::string> arguments = {"convert",       raw,           out,          "--to",
                                              one.destination, "--algorithm", one.algorithm};
        if (one.format[0] == 'T') {  // without a finish, frames go through the component's tone curve and matrix
            arguments.insert(arguments.end(), {"--tone", "linear"});
        }
        RunSuccessfully(arguments);
        const cv::Mat again = DecodePicture(directory.Read("again.png"), out).pixels;
        EXPECT_EQ(again.type(), one.destination.back() == '8' ? CV_8UC3 : CV_16UC3);
        EXPECT_GT(SignalToNoise(again, waves.pixels), one.decibels);
    }
}

}  // namespace
}  // namespace kvx::tool
