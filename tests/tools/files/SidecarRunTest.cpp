#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "ExpectToolError.h"
#include "TemporaryDirectory.h"
#include "ToolRun.h"
#include "tools/frames/FrameReader.h"

namespace kvx::tool {
namespace {

TEST(Sidecar, OptionsOverrideItAndItOverridesTheName) {
    const TemporaryDirectory directory;
    const std::string path = directory.Write("a_9x9_BayerGR8.raw", Bytes(5 + 2 * 4 + 3));
    directory.WriteText("a_9x9_BayerGR8.json", R"({"format": "BayerBG8", "width": 2})");
    directory.WriteText("a_9x9_BayerGR8.raw.json",  // takes precedence over the other
                        R"({"bayer_pattern": "RGGB", "bits_per_sample": 8, "width": 3, "height": 3, "stride": 4,
                                  "offset": 5, "black_level": 7.25, "white_level": [200, 201, 202.5, 203], "camera": "any note",
                                  "white_balance_gains": {"R": 2, "G": 1.0, "B": 1.5}})");
    const FrameInput input = ReadFrame(path, {});
    EXPECT_EQ(frame::Name(input.frame.format), "BayerRG8");
    EXPECT_EQ(input.frame.samples.size(), cv::Size(3, 3));
    EXPECT_EQ(input.sidecar.blackLevel, frame::Levels(7.25));
    EXPECT_EQ(input.sidecar.whiteLevel, frame::Levels(200, 201, 202.5, 203));
    EXPECT_EQ(input.sidecar.gains.value().red, 2);
    EXPECT_NE(input.inferred.find("format BayerRG8, width 3, height 3, stride 4, offset 5 taken from " + path),
              std::string::npos);

    FrameRequest request;
    request.width = 2;
    request.format = frame::FormatByName("BayerGB8");
    request.skipBytes = 6;
    const FrameInput given = ReadFrame(path, request);
    EXPECT_EQ(frame::Name(given.frame.format), "BayerGB8");
    EXPECT_EQ(given.frame.samples.size(), cv::Size(2, 3));

    FrameRequest alone;
    alone.width = alone.height = 4;
    alone.useSidecar = false;
    EXPECT_EQ(ReadFrame(path, alone).inferred, "format BayerGR8 taken from its name");
}

TEST(Sidecar, ErrorsNameFileAndKey) {
    const TemporaryDirectory directory;
    const std::string path = directory.Write("a_4x4_BayerGR8.raw", Bytes(16));
    const std::vector<std::pair<const char*, const char*>> cases = {
        {"{\"width\": 4", "a_4x4_BayerGR8.json: is not a JSON object"},
        {"[4, 4]", "is not a JSON object"},
        {R"({"width": "4"})", "\"width\" is \"4\""},
        {R"({"height": -4})", "\"height\" is -4"},
        {R"({"format": "BayerXY8"})", "no format \"BayerXY8\""},
        {R"({"bayer_pattern": "RGB", "bits_per_sample": 8})", "\"bayer_pattern\" is \"RGB\""},
        {R"({"white_balance_gains": {"R": 1, "G": 1}})", "\"white_balance_gains\" lacks"},
        {R"({"colour_matrix": [1, 0, 0]})", "\"colour_matrix\""},
        {R"({"black_level": [1, 2]})", "\"black_level\" is an array, not a number or a list of four"},
    };
    for (const auto& [content, fragment] : cases) {
        directory.WriteText("a_4x4_BayerGR8.json", content);
        ExpectToolError(ExitCode::Input, fragment, [&] { ReadFrame(path, {}); });
    }
}

TEST(SidecarRun, KnownMembersAreCopiedFromFileToFile) {
    const TemporaryDirectory directory;
    const std::string frame = directory.Write("a.raw", {1, 2, 3, 4, 5, 6, 7, 8});
    directory.WriteText(
        "a.json",
        R"({"format": "BayerGB16", "width": 2, "height": 2, "black_level": 64, "white_level": [1, 2.5, 3, 4],
                                            "white_balance_gains": {"R": 2, "G": 1, "B": 1.5}})");
    RunSuccessfully({"pack", frame, directory.Path("b.bin"), "--layout", "big-endian"});
    EXPECT_EQ(directory.Read("b.bin"), (Bytes{2, 1, 4, 3, 6, 5, 8, 7}));
    RunSuccessfully({"unpack", directory.Path("b.bin"), directory.Path("c.raw")});
    EXPECT_EQ(directory.Read("c.raw"), directory.Read("a.raw"));
    nlohmann::json expected = nlohmann::json::parse(directory.Read("a.json"));
    EXPECT_EQ(nlohmann::json::parse(directory.Read("c.raw.json")), expected);
    expected["format"] = "BayerGB16be";
    EXPECT_EQ(nlohmann::json::parse(directory.Read("b.bin.json")), expected);
}

TEST(SidecarRun, AppliesWhereOptionsLeaveOpenWhatItSays) {
    const TemporaryDirectory directory;
    Bytes samples(12 * 8);
    for (size_t index = 0; index < samples.size(); ++index) {
        samples[index] = static_cast<uint8_t>(20 + index * 37 % 150);
    }
    const std::string plain = directory.Write("plain_12x8_BayerRG8.raw", samples);
    const std::string noted = directory.Write("noted_12x8_BayerRG8.raw", samples);
    directory.WriteText("noted_12x8_BayerRG8.json", R"({"black_level": 16, "white_level": 200,
                                  "white_balance_gains": {"R": 2, "G": 1, "B": 1.5}})");
    const auto convert = [](const std::string& path, std::vector<std::string> options) {
        options.insert(options.begin(), {"convert", path, "-"});
        return RunSuccessfully(options).standardOutput;
    };
    EXPECT_EQ(convert(noted, {"--linear"}), convert(plain, {}));
    EXPECT_EQ(convert(noted, {}),
              convert(plain, {"--white-balance", "2,1,1.5", "--black-level", "16", "--white-level", "200"}));
    EXPECT_EQ(convert(noted, {"--look", "natural"}),
              convert(plain, {"--white-balance", "2,1,1.5", "--black-level", "16,16,16,16", "--white-level", "200",
                              "--exposure", "auto", "--tone", "srgb"}));
    EXPECT_EQ(convert(noted, {"--white-balance", "1,1,1", "--black-level", "0", "--white-level", "255"}),
              convert(plain, {"--black-level", "0"}));
    const std::string camera =
        directory.WriteText("camera.json", R"({"kvx_camera_profile": 1, "black_level": 16, "white_level": 200,
                                     "white_balance_gains": {"R": 2, "G": 1, "B": 1.5}})");
    EXPECT_EQ(convert(plain, {"--camera", camera}), convert(noted, {}));
    EXPECT_EQ(convert(plain, {"--camera", camera, "--linear"}), convert(plain, {}));
    EXPECT_EQ(
        convert(plain, {"--camera", camera, "--white-balance", "1,1,1", "--black-level", "0", "--white-level", "255"}),
        convert(plain, {"--black-level", "0"}));
    EXPECT_EQ(convert(noted, {"--white-balance", "white-patch"}),
              convert(plain, {"--white-balance", "white-patch", "--black-level", "16", "--white-level", "200"}));
    EXPECT_NE(convert(plain, {"--white-balance", "white-patch"}), convert(plain, {"--white-balance", "grey-world"}));
    EXPECT_EQ(convert(plain, {"--white-balance-from", "0,0,12,8"}), convert(plain, {"--white-balance", "grey-world"}));

    const nlohmann::json finish = nlohmann::json::parse(
        TextOf({"info", noted, "--json", "--white-level", "201.5", "--exposure", "1", "--look", "natural"}))["finish"];
    const auto part = [&finish](const char* name) {
        return finish[name]["value"].get<std::string>() + " " + finish[name]["origin"].get<std::string>();
    };
    EXPECT_EQ(part("black level"), "16 sidecar");
    EXPECT_EQ(part("white level"), "201.5 options");
    EXPECT_EQ(part("white balance"), "2, 1, 1.5 sidecar");
    EXPECT_EQ(part("exposure"), "1 EV options");
    EXPECT_EQ(part("tone"), "srgb look");
}

/** Misspelt keys, and frames that need a look, are named in one line each. */
TEST(SidecarRun, HintsSayWhatIsUnknownOrLinear) {
    const TemporaryDirectory directory;
    const std::string dark = directory.Write("dark_8x8_BayerRG8.raw", Bytes(64, 20));
    const auto errorsOf = [&](std::vector<std::string> options) {
        options.insert(options.begin(),
                       {"convert", dark, "-", "--format", "BayerRG8", "--width", "8", "--height", "8"});
        return RunSuccessfully(options).standardError;
    };
    const std::string linear = "looks like linear light: --look natural --black-level 20 makes";
    EXPECT_NE(errorsOf({}).find(linear), std::string::npos);
    EXPECT_EQ(errorsOf({"--linear"}), "");
    EXPECT_EQ(errorsOf({"--look", "natural"}), "");
    directory.WriteText("dark_8x8_BayerRG8.json", R"({"black_levle": 20, "lens": "f/2"})");
    EXPECT_NE(errorsOf({"--look", "natural"})
                  .find(R"(did you mean "black_level" by "black_levle"? other unknown keys are ignored: "lens")"),
              std::string::npos);
    const std::string bright = directory.Write("bright_8x8_BayerRG8.raw", Bytes(64, 120));
    EXPECT_EQ(RunSuccessfully({"convert", bright, "-"}).standardError,
              "kvx-demosaic: " + bright + ": format BayerRG8, width 8, height 8 taken from its name\n");
}

}  // namespace
}  // namespace kvx::tool
