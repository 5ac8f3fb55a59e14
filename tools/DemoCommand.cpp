#include "tools/DemoCommand.h"

#include <array>
#include <filesystem>
#include <memory>

#include "tools/Algorithm.h"
#include "tools/BayerConversion.h"
#include "tools/Console.h"
#include "tools/FrameName.h"
#include "tools/Mosaic.h"
#include "tools/OutputFile.h"
#include "tools/PictureEncoder.h"
#include "tools/Scene.h"
#include "tools/ToolError.h"

namespace kvx::tool {
namespace {

namespace fs = std::filesystem;

constexpr const char* kFooter = R"(Writes scene.png, frames such as scene_768x512_BayerRG12.raw, and for each frame a
picture by every algorithm, such as scene_BayerRG12_edge-aware.png.

Example:
  kvx-demosaic demo /tmp/kvx-demo)";

/** Each pattern once, and the depths that sensors have most. */
constexpr std::array kFormats = {"BayerGR8", "BayerRG12", "BayerGB10", "BayerBG16"};

void WriteAndTell(const fs::path& path, const Bytes& content) {
    WriteOutput(path.string(), content);
    PrintText(path.string() + "\n");
}

void WriteConversions(const fs::path& directory, const RawFrame& frame) {
    BayerComponent component;
    for (const NamedAlgorithm algorithm : kAlgorithms) {
        component.SetAlgorithm(algorithm.number);
        const fs::path path = directory / fmt::format("scene_{}_{}.png", frame.format->name, algorithm.name);
        const Picture picture = ConvertFrame(component, frame, RequireFormat("RGB8"), path.string());
        WriteAndTell(path, EncodePicture(picture, PictureKind::Png));
    }
}

void Demo(const fs::path& directory) {
    std::error_code error;
    fs::create_directories(directory, error);
    if (error) {
        Fail(ExitCode::Output, "{}: cannot be made: {}", directory.string(), error.message());
    }
    const Picture scene = DrawScene();
    WriteAndTell(directory / "scene.png", EncodePicture(scene, PictureKind::Png));
    const FrameSize size{static_cast<uint64_t>(scene.pixels.cols), static_cast<uint64_t>(scene.pixels.rows)};
    for (const char* formatName : kFormats) {
        const RawFrame frame = MakeMosaic(scene, RequireFormat(formatName));
        WriteAndTell(directory / MakeFrameName("scene", size, *frame.format), EncodeRaw(frame.samples));
        WriteConversions(directory, frame);
    }
}

}  // namespace

void AddDemoCommand(CLI::App& tool) {
    const auto directory = std::make_shared<std::string>("kvx-demo");
    CLI::App* command = tool.add_subcommand("demo", "Draw a test scene, make raw frames of it and convert them");
    command->add_option("DIR", *directory, "Where to write; default: kvx-demo");
    command->footer(kFooter);
    command->callback([directory] { Demo(*directory); });
}

}  // namespace kvx::tool
