#include <fmt/format.h>
#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include "TemporaryDirectory.h"
#include "ToolRun.h"
#include "tools/files/PictureDecoder.h"
#include "tools/files/PictureEncoder.h"
#include "tools/scene/Scene.h"

namespace kvx::tool {
namespace {

TEST(RoundTrip, PictureToMosaicAndBackForEveryPatternAndDepth) {
    std::vector<std::array<std::string, 3>> cases = {{"TrueSense_RGGB_WRRW_0_8", "RGB8", "fast"},
                                                     {"TrueSense_BGGR_WBBW_1_10", "BGR10", "bayer-like"},
                                                     {"TrueSense_GRBG_WGGW_2_12", "RGB8", "simple"},
                                                     {"TrueSense_GBRG_WGGW_3_14", "RGB16", "fast"}};
    for (const char* pattern : {"GR", "RG", "GB", "BG"}) {
        for (const int bits : {8, 10, 12, 14, 16}) {
            const std::string format = fmt::format("Bayer{}{}", pattern, bits);
            cases.push_back({format, "RGB8", "bilinear"});
            cases.push_back({format, fmt::format("BGR{}", bits), "edge-aware"});
        }
    }
    const TemporaryDirectory directory;
    cv::Mat soft;
    cv::GaussianBlur(DrawScene().pixels(cv::Rect(0, 50, 128, 96)), soft, {}, 4);
    const std::string picture = directory.Write("soft.png", EncodePicture({soft, 65535}, PictureKind::Png));
    for (const auto& [format, destination, algorithm] : cases) {
        SCOPED_TRACE(format + " " + destination);
        const std::string raw = directory.Path(fmt::format("soft_128x96_{}.raw", format)),
                          out = directory.Path("o.png");
        EXPECT_EQ(RunSuccessfully({"mosaic", picture, raw, "--format", format}).standardError, "");
        RunSuccessfully({"convert", raw, out, "--to", destination, "--algorithm", algorithm, "--tone", "linear"});
        cv::Mat again = DecodePicture(directory.Read("o.png"), out).pixels;
        EXPECT_EQ(again.type(), destination.back() == '8' ? CV_8UC3 : CV_16UC3);
        again.convertTo(again, CV_16U, again.depth() == CV_8U ? 257 : 1);
        EXPECT_GT(cv::PSNR(again, soft, 65535), 33);
    }
}

}  // namespace
}  // namespace kvx::tool
