#include "tools/tune/TunedConversion.h"

#include <gtest/gtest.h>

#include <opencv2/core.hpp>
#include <random>

#include "ExpectToolError.h"
#include "TemporaryDirectory.h"
#include "tools/convert/ConverterOptions.h"
#include "tools/frames/Formats.h"
#include "tools/frames/FrameConversion.h"

namespace kvx::tool {
namespace {

/** Noise next to smooth places: every edge that an algorithm can see. */
Bytes Frame(int width, int height) {
    std::mt19937 random(1);
    cv::Mat samples(height, width, CV_16U);
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            const bool isNoise = (row / 40 + column / 40) % 2 == 0;
            const auto smooth = static_cast<uint32_t>(900 + 5 * row + column) + random() % 64;
            samples.at<uint16_t>(row, column) = static_cast<uint16_t>(isNoise ? random() % 4096 : smooth);
        }
    }
    return EncodeRaw(samples);
}

/** A part as the page shows it is that part of the whole conversion. */
void ExpectTilesOfTheWholeConversion(const char* format, const char* settings) {
    constexpr int kWidth = 613, kHeight = 437;  // not a multiple of anything
    const TemporaryDirectory directory;
    const std::string path = directory.Write("frame.raw", Frame(kWidth, kHeight));
    FrameRequest request;
    request.format = RequireFormat(format);
    request.width = kWidth;
    request.height = kHeight;
    auto camera = std::make_shared<frame::CameraProfile>();
    camera->format = request.format;
    camera->width = kWidth;
    camera->height = kHeight;
    camera->hotPixels = {{160, 128}, {159, 127}, {300, 200}};
    camera->shading = {2, 2, {}};
    camera->shading.gains.fill({1, 1.5f, 1.25f, 2});

    FrameStore frames({path}, request, camera);
    TunedConversion conversion(frames.Get(0), ReadSettings(settings, request, camera));
    frame::Converter whole = MakeConverter(conversion.Settings().convert, request.format->family, frame::Site{});
    whole.SetFinish(conversion.Plan().finish, frame::kAllGiven);  // which measures on its own
    const cv::Mat expected =
        ConvertFrame(whole, ViewOf(frames.Get(0)->input.frame), RequireFormat("RGB8"), "frame").pixels;

    for (const cv::Rect& part : {cv::Rect(160, 128, 128, 128), cv::Rect(0, 0, 128, 128), cv::Rect(512, 384, 101, 53),
                                 cv::Rect(257, 131, 1, 1), cv::Rect(0, 0, kWidth, kHeight)}) {
        const cv::Mat pixels = conversion.Part(0, part);
        EXPECT_EQ(cv::norm(pixels, expected(part), cv::NORM_INF), 0) << part;
    }
    const cv::Rect half = frames.Get(0)->Bounds(1), corner = cv::Rect(200, 100, 106, 118) & half;
    EXPECT_EQ(cv::norm(conversion.Part(1, corner), conversion.Part(1, half)(corner), cv::NORM_INF), 0);
    for (const cv::Rect& outside : {cv::Rect(0, 0, kWidth + 1, 1), cv::Rect(9, 9, 0, 1)}) {
        ExpectToolError(ExitCode::Usage, "no such part", [&] { conversion.Part(0, outside); });
    }
}

TEST(Tiles, EqualTheWholeConversion) {
    const std::pair<const char*, const char*> cases[] = {
        {"BayerRG12", "{}"},
        {"BayerGB12", R"({"algorithm": "edge-aware", "look": "natural"})"},
        {"BayerGR12", R"({"algorithm": "ipp", "look": "natural", "camera": "off"})"},
        {"BayerBG12", R"({"algorithm": "swift", "white-balance-from": "40,0,20,20"})"},
        {"BayerRG12", R"({"algorithm": "fine", "look": "natural", "analog-gain": "20"})"},
        {"SCF1WBWG12", R"({"camera": "off"})"},
        {"SCF1WBWG12", R"({"algorithm": "bayer-like", "black-level": "60", "set": {"RR": "1.2"}})"},
        {"SCF1WBWG12", R"({"algorithm": "swift", "exposure": "auto", "tone": "srgb"})"},
        {"SCF1WBWG12", R"({"algorithm": "fine", "white-balance": "grey-world"})"},
        {"Mono12", R"({"exposure": "auto", "black-level": "100"})"}};
    for (const auto& [format, settings] : cases) {
        SCOPED_TRACE(std::string(format) + settings);
        ExpectTilesOfTheWholeConversion(format, settings);
    }
}

TEST(MosaicLevels, KeepTheTileAndTheMeans) {
    for (const char* name : {"BayerGB12", "SCF1WBWG12", "Mono12"}) {
        const frame::Format format = RequireFormat(name);
        RawFrame mosaic = MakeRawFrame(format, {26, 18});
        for (int row = 0; row < 18; ++row) {
            for (int column = 0; column < 26; ++column) {
                // 100 for each filter and a step of 8, which means keep, at the left
                mosaic.samples.at<uint16_t>(row, column) =
                    static_cast<uint16_t>(100 * (1 + frame::FilterIndex(format, row, column)) + (column < 8 ? 8 : 0));
            }
        }
        const RawFrame half = Halved(mosaic);
        ASSERT_EQ(half.samples.size(), cv::Size(13, 9)) << name;
        for (int row = 0; row < 9; ++row) {
            for (int column = 0; column < 13; ++column) {
                EXPECT_EQ(half.samples.at<uint16_t>(row, column),
                          100 * (1 + frame::FilterIndex(format, row, column)) + (column < 4 ? 8 : 0))
                    << name << " " << row << " " << column;
            }
        }
    }
}

}  // namespace
}  // namespace kvx::tool
