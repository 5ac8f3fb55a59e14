#include <fmt/format.h>
#include <gtest/gtest.h>
#include <malloc.h>
#include <omp.h>

#include <map>
#include <nlohmann/json.hpp>
#include <sstream>

#include "ExpectToolError.h"
#include "TemporaryDirectory.h"
#include "ToolRun.h"
#include "tools/convert/Batch.h"
#include "tools/files/PictureDecoder.h"
#include "tools/frames/Formats.h"

namespace kvx::tool {
namespace {

TEST(BatchPlan, NamesPictures) {
    const TemporaryDirectory directory;
    const std::string existing = directory.Path("");
    EXPECT_EQ(PlanFiles({"a.raw", "b.png"}, "")[0].output, "b.png");
    EXPECT_EQ(PlanFiles({"in/a.b.raw"}, existing)[0].output, existing + "a.b.png");
    const std::vector<FileTask> tasks = PlanFiles({"in/a.raw", "-"}, "new/{stem}_{stem}.TIF");
    EXPECT_EQ(tasks[0].output, "new/a_a.TIF");
    EXPECT_EQ(tasks[1].output, "new/stdin_stdin.TIF");
    EXPECT_EQ(tasks[1].kind, PictureKind::Tiff);
    // Two pictures with one name; a picture with the name of a frame.
    ExpectToolError(ExitCode::Usage, "y/a.raw", [] { PlanFiles({"x/a.raw", "y/a.raw"}, "out/"); });
    ExpectToolError(ExitCode::Usage, "x/a.raw", [] { PlanFiles({"x/a.raw", "x/./a1.png"}, "x/{stem}1.png"); });
}

TEST(FrameJob, ReportsEveryKindOfFailure) {
    const TemporaryDirectory directory;
    ConvertSettings settings;
    settings.threads = -1;  // refused by the frame layer, not by the tool
    const std::string frame = directory.Write("a_2x2_BayerRG8.raw", Bytes(4)), picture = directory.Path("a.ppm");
    EXPECT_TRUE(FrameJob(settings).Run({frame, picture, PictureKind::Pnm}).failure);
}

TEST(Batch, AsksForNoMoreThreadsThanConvertersTake) {
    const int setting = omp_get_max_threads();
    omp_set_num_threads(100000);  // OMP_NUM_THREADS may be anything: converters refuse more than 1024
    EXPECT_LE(ShareThreads(1, 0, 0).threads, 1024);
    EXPECT_LE(ShareThreads(5000, 0, 0).jobs, 1024);
    omp_set_num_threads(setting);
}

TEST(Batch, KeepsNoPictures) {
    constexpr size_t side = 1024, pictures = 8;
    const TemporaryDirectory directory;
    const std::string frame = directory.Write("a_1024x1024_Mono8.raw", Bytes(side * side));
    const std::vector<FileTask> tasks(pictures, {frame, directory.Path("a.ppm"), PictureKind::Pnm});
    ConvertSettings settings;
    settings.destination = RequireFormat("RGB8");
    std::vector<size_t> used;
    RunBatch(tasks, settings, 1, [&](const FileReport& report) {
        EXPECT_FALSE(report.failure);
        used.push_back(mallinfo2().uordblks + mallinfo2().hblkhd);
    });
    EXPECT_LT(used.back(), used.front() + 3 * side * side);
}

TEST(BatchRun, ReportsFailuresAndConvertsTheOthers) {
    const TemporaryDirectory directory;
    std::vector<std::string> arguments = {"convert", "--output", directory.Path("out/"), "--json", "--jobs", "3"};
    for (int index = 0; index < 8; ++index) {
        const std::string name = fmt::format("f{}_6x4_{}.raw", index, index % 2 == 0 ? "BayerRG8" : "Mono8");
        arguments.push_back(directory.Write(name, Bytes(index == 5 ? 23 : 24, 100)));
    }
    arguments.push_back(directory.Path("missing_6x4_BayerRG8.raw"));
    const ToolResult run = RunTool(arguments);
    EXPECT_EQ(run.exitCode, 7);
    EXPECT_NE(run.standardError.find("f5_6x4_Mono8.raw: holds 23 bytes"), std::string::npos) << run.standardError;
    EXPECT_NE(run.standardError.find("missing_6x4_BayerRG8.raw: cannot be read"), std::string::npos);
    EXPECT_NE(run.standardError.find("2 of 9 frames failed"), std::string::npos);

    std::map<std::string, nlohmann::json> objects;
    std::istringstream lines(std::string(run.standardOutput.begin(), run.standardOutput.end()));
    for (std::string line; std::getline(lines, line);) {
        const nlohmann::json object = nlohmann::json::parse(line);
        objects[object["input"]] = object;
    }
    ASSERT_EQ(objects.size(), 9u);
    for (const auto& [input, object] : objects) {
        const bool isBad = input == arguments[11] || input == arguments.back();
        EXPECT_EQ(object["status"], isBad ? "failed" : "converted") << input;
        EXPECT_GE(object["seconds"], 0);
        EXPECT_EQ(std::filesystem::exists(object["output"].get<std::string>()), !isBad) << input;
        if (!isBad) {
            EXPECT_EQ(object["width"], 6);
            EXPECT_EQ(object["algorithm"], object["format"] == "Mono8" ? "" : "bilinear");
        }
    }
    EXPECT_EQ(objects.at(arguments[11])["exitCode"], 4);
    EXPECT_EQ(objects.at(arguments.back())["exitCode"], 3);
}

TEST(BatchRun, FilesWithSeveralFrames) {
    const TemporaryDirectory directory;
    Bytes content(3);  // a header
    for (uint8_t frame = 0; frame < 11; ++frame) content.insert(content.end(), 16, frame);
    const std::string raw = directory.Write("a_4x4_BayerRG8.raw", content), out = directory.Path("out/");
    RunSuccessfully({"convert", raw, "--frames", "--skip-bytes", "3", "--output", out});
    const cv::Mat last = DecodePicture(directory.Read("out/a_4x4_BayerRG8_10.png"), "last").pixels;
    EXPECT_EQ(cv::norm(last, cv::Mat(4, 4, CV_8UC3, cv::Scalar::all(10)), cv::NORM_INF), 0);
    EXPECT_FALSE(directory.Read("out/a_4x4_BayerRG8_00.png").empty());
    const auto unpacked = [&](const char* frame) {
        return RunSuccessfully({"unpack", raw, "-", "--skip-bytes", "3", "--frame", frame}).standardOutput;
    };
    EXPECT_EQ(unpacked("0"), Bytes(16, 0));
    EXPECT_EQ(unpacked("10"), Bytes(16, 10));
    const auto refused = [&](int code, std::vector<std::string> options, const char* fragment) {
        options.insert(options.begin(), {"convert", raw});
        ExpectRefusal(RunTool(options), code, {fragment});
    };
    refused(4, {out + "b.png", "--skip-bytes", "3", "--frame", "11"}, "has 11 frames");
    refused(4, {out + "b.png", "--frame", "0"}, "no whole number of frames");
    refused(4, {out + "b.png", "--skip-bytes", "3"}, "--frame 0 (11 frames)");
    refused(2, {"--frames", "--output", out + "{stem}.png"}, "{frame}");
}

TEST(BatchRun, CropAndFlip) {
    const TemporaryDirectory directory;
    const std::string frame = directory.Write("a_4x3_BayerRG8.raw", {10, 20, 30, 40, 50, 60, 70, 80, 90, 1, 2, 3});
    const std::string corner = directory.Write("corner_2x2_BayerBG8.raw", {60, 70, 1, 2});
    const auto pixels = [](const std::string& path, std::vector<std::string> options = {}) {
        options.insert(options.begin(), {"convert", path, "-"});
        return DecodePicture(RunSuccessfully(options).standardOutput, "picture").pixels;
    };
    const cv::Mat whole = pixels(frame);
    for (const auto& [how, code] : {std::pair{"vertical", 0}, {"horizontal", 1}, {"both", -1}}) {
        cv::Mat flipped;
        cv::flip(whole, flipped, code);
        EXPECT_EQ(cv::norm(pixels(frame, {"--flip", how}), flipped, cv::NORM_INF), 0) << how;
    }
    EXPECT_EQ(cv::norm(pixels(frame, {"--crop", "1,1,2,2"}), pixels(corner), cv::NORM_INF), 0);
}

}  // namespace
}  // namespace kvx::tool
