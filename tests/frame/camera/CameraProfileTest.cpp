#include "KvxFrame/CameraProfile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "frame/support/Refusals.h"

namespace kvx::frame {
namespace {

/** Everything that a profile can have, at sites and with values that differ from each other. */
CameraProfile FullProfile(const char* format) {
    CameraProfile profile;
    profile.camera = "a \"camera\"";
    profile.format = FormatByName(format);
    profile.width = 6;
    profile.height = 5;
    profile.blackLevel = Levels(12.5, 13, 12, 11.75);
    profile.whiteLevel = Levels(250, 251, 252, 253);
    profile.gains = Gains{1.9, 1, 1.25, 1.1};
    profile.matrix = {1, 2, 3, 4, 5, 6, 7, 8, 9.5};
    profile.noise = SensorNoise{{0.5, 1.5}, {2.5, 3.5}};
    profile.hotPixels = {{0, 4}, {5, 1}};
    profile.deadPixels = {{3, 2}};
    profile.shading = {2, 3, {}};
    for (size_t colour = profile.format->family == Family::Mono ? 3 : 0; colour < 4; ++colour)
        for (int node = 0; node < 6; ++node)
            profile.shading.gains[colour].push_back(1 + 0.1F * static_cast<float>(colour + 4 * node));
    for (int sample = 0; sample < 30; ++sample) profile.darkFrame.push_back(static_cast<uint16_t>(1000 * sample + 7));
    profile.otherKeys = R"({"note":"kept"})";
    return profile;
}

TEST(CameraProfile, IsReadAsItWasWritten) {
    const auto folder = std::filesystem::path(testing::TempDir()) / "camera_profile";
    std::filesystem::create_directories(folder);
    const std::string path = folder / "camera.json", again = folder / "again.json";
    const auto content = [](const std::string& name) {
        std::ifstream file(name);
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    for (const char* format : {"BayerGB8", "TrueSense_BGGR_WBBW_0_12", "Mono8"}) {
        const CameraProfile written = FullProfile(format);
        WriteCameraProfile(written, path);
        const CameraProfile read = ReadCameraProfile(path);
        EXPECT_EQ(read.darkFrame, written.darkFrame);
        EXPECT_EQ(read.shading.gains, written.shading.gains);
        EXPECT_EQ(read.hotPixels, written.hotPixels);
        EXPECT_EQ(read.noise->colour.intercept, 3.5);
        ASSERT_EQ(read.warnings.size(), 1u);
        EXPECT_NE(read.warnings[0].find("\"note\" is unknown: did you mean"), std::string::npos);
        std::string png = content(folder / "camera-dark.png");
        png.insert(33, "\0\0\0\x04gAMA\0\0\xB1\x8F\x0B\xFC\x61\x05", 16);  // 1 / 2.2, after the header
        if (const size_t own = png.find("gAMA", 49); own != std::string::npos) png.erase(own - 4, 16);
        std::ofstream(folder / "camera-dark.png", std::ios::binary) << png;
        EXPECT_EQ(ReadCameraProfile(path).darkFrame, written.darkFrame);  // other programs enter a gamma
        WriteCameraProfile(read, again);
        std::string expected = content(path);
        expected.replace(expected.find("camera-dark"), 6, "again");
        EXPECT_EQ(content(again), expected);  // no member was lost
        for (const char* key : {"camera", "width", "height", "black_level", "white_level", "white_balance_gains", "W",
                                "colour_matrix", "pan", "dead_pixels", "note"})
            EXPECT_NE(expected.find('"' + std::string(key) + "\": "), std::string::npos) << key;
    }
    std::filesystem::permissions(path, std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    std::filesystem::create_symlink(path, folder / "link.json");
    WriteCameraProfile({}, folder / "link.json");
    EXPECT_EQ(ReadCameraProfile(path).camera, "");  // the file behind the link
    EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms(0600));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link.json"));
    WriteCameraProfile(FullProfile("Mono8"), path);
    std::filesystem::remove(folder / "camera-dark.png");
    ExpectRefused(kInvalid, "camera-dark.png: cannot be read", [&] { ReadCameraProfile(path); });
    ExpectRefused(0x80070001, "cannot be written", [&] { WriteCameraProfile({}, folder / "none" / "a.json"); });
    std::filesystem::remove_all(folder);
}

TEST(CameraProfile, RefusesWithTheKeyInTheSentence) {
    constexpr uint32_t kRange = 0x80070004;
    const struct {
        const char* members;
        uint32_t code;
        const char* sentence;
    } refusals[] = {
        {R"(,)", kInvalid, "not a JSON object"},
        {R"("kvx_camera_profile": 2)", kInvalid, "no camera profile"},
        {R"("black_level": "12")", kInvalid, "black_level"},
        {R"("black_level": [1, 2, 3])", kInvalid, "list of 4 numbers"},
        {R"("black_level": 255, "format": "BayerRG8")", kRange, "black < white <= 255"},
        {R"("white_balance_gains": {"R": 1, "G": 1})", kInvalid, "white_balance_gains"},
        {R"("white_balance_gains": {"R": 0, "G": 1, "B": 1})", kRange, "gain of 0"},
        {R"("colour_matrix": [1])", kInvalid, "colour_matrix"},
        {R"("noise": {"slop": 1})", kInvalid, "\"slop\" is unknown"},
        {R"("noise": {"pan": {}})", kInvalid, "both"},
        {R"("format": "BayerXX8")", kInvalid, "format"},
        {R"("hot_pixels": [[1]], "format": "BayerRG8", "width": 4, "height": 4)", kInvalid, "hot_pixels"},
        {R"("hot_pixels": [[0, 4]], "format": "BayerRG8", "width": 4, "height": 4)", kRange, "at 0, 4"},
        {R"("dead_pixels": [[0, 0]])", kInvalid, "need format, width and height"},
        {R"("shading": {"columns": 2, "rows": 2, "gains": {"Y": [1, 1, 1]}}, "format": "Mono8")", kInvalid,
         "4 numbers"},
        {R"("shading": {"columns": 2, "rows": 2, "gains": {"Y": [1, 1, 1, 0.9]}}, "format": "Mono8", "width": 4,
            "height": 4)",
         kRange, "shading gain of 0.9"},
        {R"("dark_frame": "a.png")", kInvalid, "read it from a file"},
    };
    for (const auto& refusal : refusals)
        ExpectRefused(refusal.code, refusal.sentence, [&] {
            ParseCameraProfile(std::string(R"({"kvx_camera_profile": 1, )") + refusal.members + "}");
        });
}

}  // namespace
}  // namespace kvx::frame
