#include <fmt/format.h>
#include <gtest/gtest.h>

#include "DrawnChart.h"
#include "KvxFrame/CameraProfile.h"
#include "TemporaryDirectory.h"
#include "ToolRun.h"
#include "tools/files/PictureDecoder.h"
#include "tools/files/PictureEncoder.h"
#include "tools/frames/Mosaic.h"

namespace kvx::tool {
namespace {

const std::vector<cv::Point2f> kCorners = {{120, 90}, {480, 150}, {500, 330}, {90, 420}};
const cv::Vec3d kGains(1.6, 1, 2.4);

/** A frame of a chart seen by a sensor with these gains, sRGB primaries and a black level of 100.5. */
std::string WriteFrame(const TemporaryDirectory& directory, const std::string& name, const cv::Mat_<cv::Vec3f>& scene) {
    cv::Mat_<cv::Vec3w> words(scene.size());
    std::transform(scene.begin(), scene.end(), words.begin(), [](const cv::Vec3f& light) {
        cv::Vec3w pixel;
        for (int channel = 0; channel < 3; ++channel) {
            // Blue first; the sums are rounded when the mosaic is reduced to 12 bits.
            pixel[2 - channel] = static_cast<uint16_t>(16 * (100.5 + 3900 * 0.9 * light[channel] / kGains[channel]));
        }
        return pixel;
    });
    const RawFrame frame = MakeMosaic({words, 65535}, frame::FormatByName("BayerGR12"));
    return directory.Write(name, EncodeRaw(frame.samples));
}

TEST(ChartRun, WritesGainsAndMatrixAndAPicture) {
    const TemporaryDirectory directory;
    const DrawnChart drawn(kCorners);
    const std::string frame = WriteFrame(directory, "a_640x480_BayerGR12.raw", drawn.light);
    const std::string profilePath =
        directory.WriteText("camera.json", R"({"kvx_camera_profile": 1, "camera": "mine"})");
    const std::vector<std::string> command = {"calibrate", "chart", frame, "-o", profilePath, "--black-level", "100.5"};
    const std::string table = TextOf(command);
    EXPECT_NE(table.find("\ncyan "), std::string::npos) << table;
    EXPECT_NE(table.find("\nmean "), std::string::npos) << table;
    const frame::CameraProfile profile = frame::ReadCameraProfile(profilePath);
    EXPECT_EQ(profile.camera, "mine");
    EXPECT_EQ(profile.blackLevel->ofFilters[3], 100.5);
    EXPECT_NEAR(profile.gains->red / profile.gains->green, kGains[0], 0.03);
    EXPECT_NEAR(profile.gains->blue / profile.gains->green, kGains[2], 0.03);
    EXPECT_NEAR((*profile.matrix)[0], 1, 0.05);
    EXPECT_NEAR((*profile.matrix)[5], 0, 0.05);
    EXPECT_NEAR((*profile.matrix)[0] + (*profile.matrix)[1] + (*profile.matrix)[2], 1, 1e-9);
    const Picture sheet = DecodePicture(directory.Read("camera-chart.png"), "sheet");
    EXPECT_GT(sheet.pixels.cols, 1000);

    // The same chart by its corners, which the search need not find.
    std::string corners;
    for (const cv::Point2d& corner : ChartCorners(drawn.toScene)) {
        corners += fmt::format("{}{:.1f},{:.1f}", corners.empty() ? "" : ",", corner.x, corner.y);
    }
    std::vector<std::string> withCorners = command;
    withCorners.insert(withCorners.end(), {"--corners", corners, "--picture", directory.Path("b.tiff")});
    TextOf(withCorners);
    EXPECT_NEAR((*frame::ReadCameraProfile(profilePath).matrix)[0], (*profile.matrix)[0], 0.02);
    EXPECT_TRUE(directory.Entries().contains("b.tiff"));
}

TEST(ChartRun, MeasuresWhatTheProfileCorrects) {
    const TemporaryDirectory directory;
    cv::Mat_<cv::Vec3f> shaded = DrawnChart(kCorners).light.clone();
    shaded.forEach([](cv::Vec3f& light, const int* at) { light[2] /= 1 + static_cast<float>(at[1]) / 639; });
    const std::string frame = WriteFrame(directory, "shaded_640x480_BayerGR12.raw", shaded);
    const std::string path = directory.WriteText(
        "camera.json", R"({"kvx_camera_profile": 1, "format": "BayerGR12", "width": 640, "height": 480,
        "black_level": 64, "shading": {"columns": 2, "rows": 2, "gains":
        {"R": [1, 1, 1, 1], "Gr": [1, 1, 1, 1], "Gb": [1, 1, 1, 1], "B": [1, 2, 1, 2]}}})");
    // Of this frame, as convert takes it.
    directory.WriteText("shaded_640x480_BayerGR12.raw.json", R"({"black_level": 100.5})");
    RunSuccessfully({"calibrate", "chart", frame, "-o", path});
    const frame::CameraProfile profile = frame::ReadCameraProfile(path);
    EXPECT_NEAR(profile.gains->blue / profile.gains->green, kGains[2], 0.03);
    EXPECT_NEAR((*profile.matrix)[8], 1, 0.05);
    EXPECT_EQ(profile.blackLevel->ofFilters[0], 64);
}

TEST(ChartRun, RefusesFramesThatItCannotMeasure) {
    const TemporaryDirectory directory;
    const std::string profile = directory.Path("camera.json");
    const auto refusal = [&](const std::string& frame, std::vector<std::string> options) {
        options.insert(options.begin(), {"calibrate", "chart", frame, "--black-level", "0", "-o", profile});
        return RunTool(options);
    };
    const std::string wall =
        WriteFrame(directory, "wall_640x480_BayerGR12.raw", cv::Mat_<cv::Vec3f>(480, 640, cv::Vec3f::all(0.5f)));
    ExpectRefusal(refusal(wall, {}), 4, {"wall_640x480_BayerGR12.raw", "no chart found", "--corners"});
    ExpectRefusal(refusal(wall, {"--corners", "1,2,3"}), 2, {"--corners", "8 numbers"});
    for (const char* corners : {"5,5,300,5,300,200,5,200", "7,7,7,7,7,7,7,7", "-1e99,0,1e99,0,9,9,3,3"}) {
        ExpectRefusal(refusal(wall, {"--corners", corners}), 4, {"--corners", "not those of a chart"});
    }
    ExpectRefusal(refusal(wall, {"--white-level", "0"}), 2, {"wall", "white level of 0"});
    ExpectRefusal(refusal(wall, {"--picture", directory.Path("a.bmp")}), 2, {"a.bmp"});
    ExpectRefusal(refusal(wall, {"--format", "Mono12"}), 2, {"mono"});
    EXPECT_FALSE(directory.Entries().contains("camera.json"));
}

}  // namespace
}  // namespace kvx::tool
