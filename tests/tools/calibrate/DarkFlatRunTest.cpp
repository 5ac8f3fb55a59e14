#include <gtest/gtest.h>

#include <cmath>

#include "KvxFrame/CameraProfile.h"
#include "KvxFrame/Mosaic.h"
#include "TemporaryDirectory.h"
#include "ToolRun.h"
#include "tools/files/Pnm.h"
#include "tools/files/RawFrame.h"

namespace kvx::tool {
namespace {

constexpr int kWidth = 384, kHeight = 256, kFrames = 6, kPlanted = 40;
constexpr double kBlack = 64.3, kIntercept = 9, kSlope = 0.5;
constexpr uint16_t kLight = 32768;  // of 65535

/** Sites far from each other, which the sensor does not know of. */
frame::Site Planted(int index, uint32_t shift) {
    return {static_cast<uint32_t>(9 * index + 4) % kWidth, static_cast<uint32_t>(31 * index + shift) % kHeight};
}

/** A frame of an even light, with weak defects of eight deviations of its noise. */
std::string WriteFrame(const TemporaryDirectory& directory, const char* format, bool isFlat, uint64_t seed,
                       double fixedPattern = 0) {
    frame::Sensor sensor;
    sensor.fixedPattern = fixedPattern;
    sensor.noise = frame::SensorNoise{{kSlope, kIntercept}, {kSlope, kIntercept}};
    sensor.noiseSeed = seed;
    sensor.blackLevel = kBlack;
    sensor.cornerLight = {0.7, 0.75, 0.65};
    const std::vector<uint16_t> light(size_t{kWidth} * kHeight, isFlat ? kLight : 0);
    RawFrame raw = MakeRawFrame(frame::FormatByName(format), {kWidth, kHeight});
    frame::MakeMosaic({light.data(), kWidth, kHeight, 0, 2 * light.size(), frame::FormatByName("Mono16")},
                      DestinationOf(raw), sensor);
    for (int i = 0; i < kPlanted; ++i) {
        const frame::Site site = Planted(i, isFlat ? 100 : 0);
        auto& sample = raw.samples.at<uint16_t>(static_cast<int>(site.row), static_cast<int>(site.column));
        const double deviation = std::sqrt(kSlope * (isFlat ? sample - kBlack : 0) + kIntercept);
        sample = static_cast<uint16_t>(std::lround(sample + 8 * deviation * (isFlat && i % 2 == 0 ? -1 : 1)));
    }
    return directory.Write(std::string(isFlat ? "flat" : "dark") + std::to_string(seed) + ".pgm",
                           EncodePnm({raw.samples, 4095}));
}

/** Into one profile. @return the arguments for the flat frames */
std::vector<std::string> MeasureDarkAndFlat(const TemporaryDirectory& directory, const std::string& profile,
                                            const char* format, double fixedPattern = 0) {
    std::vector<std::string> arguments;
    for (const bool isFlat : {false, true}) {
        arguments = {"calibrate", isFlat ? "flat" : "dark", "--format", format, "-o", profile};
        for (int i = 0; i < kFrames; ++i)
            arguments.push_back(WriteFrame(directory, format, isFlat, 10 * isFlat + i, fixedPattern));
        RunSuccessfully(arguments);
    }
    return arguments;
}

void ExpectPlanted(const std::vector<frame::Site>& found, uint32_t shift) {
    for (int i = 0; i < kPlanted; ++i) {
        EXPECT_EQ(std::count(found.begin(), found.end(), Planted(i, shift)), 1) << i;
    }
    EXPECT_EQ(found.size(), size_t{kPlanted});  // fewer than one of 100,000 good pixels
}

void ExpectShading(const frame::CameraProfile& profile) {
    const frame::Shading& shading = profile.shading;
    const bool isBayer = profile.format->family == frame::Family::Bayer;
    const std::array<double, 4> corners =
        isBayer ? std::array{0.7, 0.75, 0.75, 0.65} : std::array{0.7, 0.75, 0.65, 0.7};
    for (size_t filter = 0; filter < 4; ++filter) {
        for (size_t node = 0; node < shading.gains[filter].size(); ++node) {
            const auto place = [](size_t index, uint32_t nodes) {
                return 2.0 * static_cast<double>(index) / (nodes - 1) - 1;
            };
            const double x = place(node % shading.columns, shading.columns);
            const double y = place(node / shading.columns, shading.rows);
            const double square =
                (x * x * kWidth * kWidth + y * y * kHeight * kHeight) / (kWidth * kWidth + kHeight * kHeight);
            EXPECT_NEAR(shading.gains[filter][node] * (1 - (1 - corners[filter]) * square), 1, 0.01) << filter;
        }
    }
}

TEST(Calibrate, FindsWhatWasPutIntoSimulatedFrames) {
    for (const char* format : {"BayerGB12", "TrueSense_BGGR_WBBW_0_12"}) {
        SCOPED_TRACE(format);
        const TemporaryDirectory directory;
        const std::string path = directory.WriteText(
            "camera.json", R"({"kvx_camera_profile": 1, "colour_matrix": [1, 0, 0, 0, 1, 0, 0, 0, 1]})");
        MeasureDarkAndFlat(directory, path, format);
        const frame::CameraProfile profile = frame::ReadCameraProfile(path);
        EXPECT_TRUE(profile.matrix);  // what other steps measured stays
        EXPECT_TRUE(profile.darkFrame.empty());
        for (const double level : profile.blackLevel->ofFilters) EXPECT_NEAR(level, kBlack, 0.05);
        for (const frame::NoiseLine& line : {profile.noise->pan, profile.noise->colour}) {
            EXPECT_NEAR(line.intercept, kIntercept, 0.1 * kIntercept);
            EXPECT_NEAR(line.slope, kSlope, 0.1 * kSlope);
        }
        ExpectPlanted(profile.hotPixels, 0);
        ExpectPlanted(profile.deadPixels, 100);
        ExpectShading(profile);
    }
}

TEST(Calibrate, KeepsAFixedPatternAndMeasuresFlatFramesAlone) {
    const TemporaryDirectory directory;
    const std::string path = directory.Path("camera.json"), alone = directory.Path("alone.json");
    constexpr double kPattern = 6;
    std::vector<std::string> ofFlatFrames = MeasureDarkAndFlat(directory, path, "BayerRG12", kPattern);
    ofFlatFrames[5] = alone;
    RunSuccessfully(ofFlatFrames);
    const frame::CameraProfile profile = frame::ReadCameraProfile(path);
    ASSERT_EQ(profile.darkFrame.size(), size_t{kWidth} * kHeight);
    double sum = 0;
    for (const uint16_t sample : profile.darkFrame) sum += std::pow(sample / 16.0 - kBlack, 2);
    EXPECT_NEAR(std::sqrt(sum / (kWidth * kHeight)), kPattern, 0.3);
    ExpectPlanted(profile.deadPixels, 100);
    ExpectShading(profile);

    const frame::CameraProfile flatOnly = frame::ReadCameraProfile(alone);
    EXPECT_FALSE(flatOnly.blackLevel);
    EXPECT_NEAR(flatOnly.noise->colour.slope, kSlope, 0.1 * kSlope);
    EXPECT_GT(flatOnly.shading.gains[0][0], 1.2F);
}

TEST(Calibrate, RefusesFramesThatDoNotShowIt) {
    const TemporaryDirectory directory;
    const std::string dark = WriteFrame(directory, "BayerRG12", false, 1), path = directory.Path("camera.json");
    ExpectRefusal(RunTool({"calibrate", "flat", dark, "--format", "BayerRG12", "-o", path}), 4, {"expose"});
    RunSuccessfully({"calibrate", "dark", dark, "--format", "BayerRG12", "-o", path});
    ExpectRefusal(RunTool({"calibrate", "dark", dark, "--format", "BayerGR12", "-o", path}), 2, {"write another"});
    ExpectRefusal(RunTool({"calibrate", "dark", dark, "--format", "BayerRG12", "-o", dark}), 3, {"JSON"});
    ExpectRefusal(RunTool({"calibrate"}), 2, {"subcommand"});
}

}  // namespace
}  // namespace kvx::tool
