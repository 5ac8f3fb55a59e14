#include "tools/commands/Commands.h"

#include <fmt/format.h>

#include <memory>
#include <optional>

#include "tools/console/Arguments.h"
#include "tools/console/Console.h"
#include "tools/files/Dng.h"
#include "tools/files/OutputFile.h"
#include "tools/frames/FrameOptions.h"
#include "tools/frames/FrameReader.h"
#include "tools/frames/FrameWriter.h"

namespace kvx::tool {
namespace {

constexpr const char* kPackFooter =
    R"(Layouts: pfnc (10p, 12p, 14p), gige ("Packed", 10 and 12 bits), mipi (10, 12, 14 bits),
msb (words with the value in the high bits), big-endian, plain (right-aligned
little-endian words). The input may have any of these layouts. Sizes, formats and sidecars
work as for 'convert'; a sidecar with all that is known is written next to the packed file.
A DNG file (Bayer only) holds all of it itself: levels, balance, matrix, orientation.

Examples:
  kvx-demosaic pack scene_1920x1200_BayerRG12.raw scene_1920x1200_BayerRG12p.raw --layout pfnc
  grab | kvx-demosaic pack - - --format BayerRG12p --width 640 --height 480 --layout mipi | send
  kvx-demosaic pack frame.raw frame.dng)";

constexpr const char* kUnpackFooter =
    R"(The format of the input names its layout: BayerRG12p, BayerRG12Packed, BayerRG12mipi,
BayerRG12msb, BayerRG12be or any other name of it. The result has bytes, or right-aligned
little-endian words, without padding; the extension .pgm makes it a PGM file.

Examples:
  kvx-demosaic unpack scene_1920x1200_BayerRG12p.raw scene_1920x1200_BayerRG12.raw
  kvx-demosaic unpack frame.bin frame.pgm --format SCF1WBWG10p --width 1920 --height 1080)";

const std::vector<std::pair<std::string, frame::Layout>> kLayouts = {
    {"plain", frame::Layout::Plain}, {"pfnc", frame::Layout::Pfnc},      {"gige", frame::Layout::GigE},
    {"mipi", frame::Layout::Mipi},   {"msb", frame::Layout::MsbAligned}, {"big-endian", frame::Layout::BigEndian}};

const std::vector<std::pair<std::string, FrameKind>> kKinds = {
    {"raw", FrameKind::Raw}, {"pgm", FrameKind::Pgm}, {"dng", FrameKind::Dng}, {"npy", FrameKind::Npy}};

struct PackOptions {
    std::string input;
    FrameRequest request;
    FrameFile file;
    std::optional<frame::Layout> layout;
    bool needsLayout = false;
};

void Repack(const PackOptions& options) {
    RequireDistinct(options.input, options.file.path);
    FrameFile file = options.file;
    file.kind = file.kind.value_or(FrameKindFor(file.path));
    if (options.needsLayout && file.kind == FrameKind::Raw && !options.layout) {
        Fail(ExitCode::Usage, "--layout is required for a headerless file: pfnc, gige, mipi, msb, big-endian or plain");
    }
    file.layout = options.layout.value_or(frame::Layout::Plain);
    const FrameInput input = ReadFrame(options.input, options.request);
    file.hasSidecar = options.request.useSidecar;
    WriteFrame(file, input.frame, input.sidecar);
    const auto print = [&](const std::string& message) {
        if (!message.empty()) PrintMessage(fmt::format("{}: {}", options.input, message));
    };
    print(input.inferred);
    print(input.sidecar.warning);
    if (file.kind == FrameKind::Dng) print(DngNote(input.sidecar));
}

CLI::App* AddRepacking(CLI::App& tool, const std::string& name, const std::string& help,
                       const std::shared_ptr<PackOptions>& options) {
    CLI::App* command = tool.add_subcommand(name, help);
    command
        ->add_option("IN", options->input,
                     "Headerless raw, camera raw, DNG, PGM, PNG, TIFF or NumPy file; - is standard input")
        ->required();
    command->add_option("OUT", options->file.path, "Headerless raw file, or .dng, .npy or .pgm; - is standard output")
        ->required();
    AddFrameOptions(*command, options->request);
    command->callback([options] { Repack(*options); });
    return command;
}

}  // namespace

void AddPackCommands(CLI::App& tool) {
    const auto packOptions = std::make_shared<PackOptions>();
    CLI::App* pack = AddRepacking(tool, "pack", "Pack the samples of a frame, or change their layout", packOptions);
    packOptions->needsLayout = true;
    AddChoice<std::optional<frame::Layout>, frame::Layout>(*pack, "--layout", packOptions->layout, kLayouts,
                                                           "pfnc, gige, mipi, msb, big-endian or plain");
    AddChoice<std::optional<FrameKind>, FrameKind>(*pack, "--to", packOptions->file.kind, kKinds,
                                                   "Kind of the file: raw, pgm, npy or dng; default: by its name");
    pack->add_flag_callback(
        "--image-padding", [packOptions] { packOptions->file.padding = frame::RowPadding::Image; },
        "Start each row right after the last bit of the one before; default: at a byte");
    pack->footer(kPackFooter);

    CLI::App* unpack = AddRepacking(tool, "unpack", "Unpack the samples of a frame", std::make_shared<PackOptions>());
    unpack->footer(kUnpackFooter);
}

}  // namespace kvx::tool
