#include <fmt/format.h>
#include <gtest/gtest.h>

#include <numbers>

#include "TemporaryDirectory.h"
#include "ToolRun.h"
#include "tools/files/PictureDecoder.h"
#include "tools/files/PictureEncoder.h"

namespace kvx::tool {
namespace {

constexpr std::array kPatterns = {"GR", "RG", "GB", "BG"};
constexpr std::array kDepths = {8, 10, 12, 14, 16};

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
    const TemporaryDirectory directory;
    const Picture waves = DrawWaves();
    const std::string picture = directory.Write("waves.png", EncodePicture(waves, PictureKind::Png));
    for (const char* pattern : kPatterns) {
        for (const int bits : kDepths) {
            const std::string format = fmt::format("Bayer{}{}", pattern, bits);
            const std::string raw = directory.Path(fmt::format("waves_128x96_{}.raw", format));
            const ToolResult mosaic = RunSuccessfully({"mosaic", picture, raw, "--format", format});
            EXPECT_EQ(mosaic.standardError, "");
            for (const auto& [destination, algorithm] : {std::pair<std::string, const char*>{"RGB8", "bilinear"},
                                                         {fmt::format("BGR{}", bits), "edge-aware"}}) {
                const std::string out = directory.Path("again.png");
                RunSuccessfully({"convert", raw, out, "--to", destination, "--algorithm", algorithm});
                const cv::Mat again = DecodePicture(directory.Read("again.png"), out).pixels;
                EXPECT_EQ(again.type(), destination.back() == '8' ? CV_8UC3 : CV_16UC3);
                EXPECT_GT(SignalToNoise(again, waves.pixels), 52) << format << " " << destination;
            }
        }
    }
}

/** A frame of 8x6 pixels, as a camera would write it, that is white behind the filters of one colour only. */
Bytes FlatFrame(const std::string& pattern, int bits, char colour) {
    const std::string below = {pattern[0] == 'G' ? (pattern[1] == 'R' ? 'B' : 'R') : 'G',
                               pattern[0] == 'G' ? 'G' : (pattern[0] == 'R' ? 'B' : 'R')};
    Bytes frame;
    for (int row = 0; row < 6; ++row) {
        for (int column = 0; column < 8; ++column) {
            const char filter = (row % 2 == 0 ? pattern : below)[column % 2];
            const int sample = filter == colour ? (1 << bits) - 1 : 0;
            frame.push_back(static_cast<uint8_t>(sample));
            if (bits > 8) {
                frame.push_back(static_cast<uint8_t>(sample >> 8));
            }
        }
    }
    return frame;
}

TEST(RoundTrip, FlatColoursThroughTheStandardStreams) {
    for (const char* pattern : kPatterns) {
        for (const int bits : {8, 12, 14}) {
            for (const char colour : {'R', 'G', 'B'}) {
                const std::string format = fmt::format("Bayer{}{}", pattern, bits);
                const std::string destination = bits == 8 ? "BGR8" : bits == 12 ? "RGB8" : "RGB16";
                const ToolResult run = RunSuccessfully(
                    {"convert", "-", "-", "--format", format, "--width", "8", "--height", "6", "--to", destination},
                    {.standardInput = FlatFrame(pattern, bits, colour)});
                const Picture picture = DecodePicture(run.standardOutput, "standard output");
                const double white = destination.ends_with("16") ? 65535 : 255;
                const cv::Scalar expected(colour == 'B' ? white : 0, colour == 'G' ? white : 0,
                                          colour == 'R' ? white : 0);
                EXPECT_EQ(picture.maximum, white);
                EXPECT_EQ(cv::norm(picture.pixels, cv::Mat(6, 8, picture.pixels.type(), expected), cv::NORM_INF), 0)
                    << format << " " << colour;
                EXPECT_EQ(run.standardError, "");
            }
        }
    }
}

TEST(RoundTrip, TrueSenseFramesOfEveryDepthAndAlgorithm) {
    const TemporaryDirectory directory;
    const Picture waves = DrawWaves();
    const std::string picture = directory.Write("waves.png", EncodePicture(waves, PictureKind::Png));
    // The component's tone curve, which stretches shadows as a display's encoding does, and no colour matrix.
    const std::vector<std::string> settings = {"--set", "RR=1", "--set", "RG=0", "--set", "RB=0",
                                               "--set", "GR=0", "--set", "GG=1", "--set", "GB=0",
                                               "--set", "BR=0", "--set", "BG=0", "--set", "BB=1"};
    cv::Mat reference;  // of the first conversion: all others show the same picture
    for (const char* format : {"TrueSense_RGGB_WRRW_0_8", "TrueSense_BGGR_WBBW_1_10", "TrueSense_GRBG_WGGW_2_12",
                               "TrueSense_GBRG_WGGW_3_14"}) {
        const std::string raw = directory.Path(fmt::format("waves_128x96_{}.raw", format));
        RunSuccessfully({"mosaic", picture, raw, "--format", format, "--linear"});
        for (const char* algorithm : {"fast", "bayer-like"}) {
            const std::string out = directory.Path("again.png");
            std::vector<std::string> arguments = {"convert", raw, out, "--algorithm", algorithm};
            arguments.insert(arguments.end(), settings.begin(), settings.end());
            if (std::string_view(format).ends_with("4")) {
                arguments.insert(arguments.end(), {"--to", "RGB16"});
            }
            RunSuccessfully(arguments);
            const cv::Mat again = DecodePicture(directory.Read("again.png"), out).pixels;
            if (reference.empty()) {
                reference = again;
            }
            EXPECT_GT(SignalToNoise(again, reference), 35) << format << " " << algorithm;
            EXPECT_GT(SignalToNoise(again, waves.pixels), 17) << format << " " << algorithm;
        }
    }
}

}  // namespace
}  // namespace kvx::tool
