#include "tools/commands/Commands.h"

#include <fmt/format.h>

#include <array>
#include <filesystem>
#include <memory>

#include "tools/console/Console.h"
#include "tools/files/FrameName.h"
#include "tools/files/OutputFile.h"
#include "tools/files/PictureEncoder.h"
#include "tools/files/RawFrame.h"
#include "tools/frames/Formats.h"
#include "tools/frames/FrameConversion.h"
#include "tools/frames/Mosaic.h"
#include "tools/scene/Scene.h"
#include "tools/scene/SimulatedCamera.h"

namespace kvx::tool {
namespace {

namespace fs = std::filesystem;

constexpr const char* kFooter = R"(Writes scene.png, frames such as scene_768x512_BayerRG12.raw, and for each frame and
algorithm a picture such as scene_BayerRG12_edge-aware.png.

--camera writes frames of a simulated camera to try 'calibrate' on: dark, flat, chart, scene.

Examples:
  kvx-demosaic demo /tmp/kvx-demo
  kvx-demosaic demo --camera frames)";

/** Each Bayer pattern once, with the most common depths, and a TrueSense frame. */
constexpr std::array kFormats = {"BayerGR8", "BayerRG12", "BayerGB10", "BayerBG16", "TrueSense_RGGB_WRRW_0_12"};

void WriteAndPrint(const fs::path& path, const Bytes& content) {
    WriteOutput(path.string(), content);
    PrintText(path.string() + "\n");
}

/** The drawn scene already has the colours of a display: a colour matrix would exaggerate them. */
void SwitchMatrixOff(frame::Converter& converter) {
    for (const char* name : {"RR", "RG", "RB", "GR", "GG", "GB", "BR", "BG", "BB"}) {
        converter.SetParameter(name, name[0] == name[1] ? "1" : "0");
    }
}

void WriteConversions(const fs::path& directory, const RawFrame& frame) {
    frame::Converter converter(frame.format.family);
    if (frame.format.family == frame::Family::TrueSense) {
        SwitchMatrixOff(converter);
    }
    for (const frame::Algorithm& algorithm : frame::AlgorithmsOf(converter.SourceFamily())) {
        converter.SetAlgorithm(algorithm.name);
        const fs::path path = directory / fmt::format("scene_{}_{}.png", frame::Name(frame.format), algorithm.name);
        const Picture picture = ConvertFrame(converter, ViewOf(frame), RequireFormat("RGB8"), path.string());
        WriteAndPrint(path, EncodePicture(picture, PictureKind::Png));
    }
}

void Demo(const fs::path& directory) {
    MakeDirectory(directory.string());
    const Picture scene = DrawScene();
    WriteAndPrint(directory / "scene.png", EncodePicture(scene, PictureKind::Png));
    const FrameSize size{static_cast<uint64_t>(scene.pixels.cols), static_cast<uint64_t>(scene.pixels.rows)};
    for (const char* formatName : kFormats) {
        const frame::Format format = RequireFormat(formatName);
        // The TrueSense component expects linear light.
        const RawFrame frame = MakeMosaic(scene, format, {.isLinear = format.family == frame::Family::TrueSense});
        WriteAndPrint(directory / MakeFrameName("scene", size, frame.format), EncodeRaw(frame.samples));
        WriteConversions(directory, frame);
    }
}

void DemoCamera(const fs::path& directory) {
    MakeDirectory(directory.string());
    for (const auto& [name, frame] : SimulatedCameraFrames()) {
        const FrameSize size{static_cast<uint64_t>(frame.samples.cols), static_cast<uint64_t>(frame.samples.rows)};
        WriteAndPrint(directory / MakeFrameName(name, size, frame.format), EncodeRaw(frame.samples));
    }
}

struct DemoOptions {
    std::string directory = "kvx-demo";
    bool isCamera = false;
};

}  // namespace

void AddDemoCommand(CLI::App& tool) {
    const auto options = std::make_shared<DemoOptions>();
    CLI::App* command = tool.add_subcommand("demo", "Draw a test scene, make raw frames from it and convert them");
    command->add_option("DIR", options->directory, "Directory to write to; default: kvx-demo");
    command->add_flag("--camera", options->isCamera, "Write frames of a simulated camera to calibrate");
    command->footer(kFooter);
    command->callback([options] {
        if (options->isCamera) {
            DemoCamera(options->directory);
        } else {
            Demo(options->directory);
        }
    });
}

}  // namespace kvx::tool
