#include "tools/commands/Commands.h"

#include <memory>

#include "tools/console/Arguments.h"
#include "tools/console/Console.h"
#include "tools/console/Progress.h"
#include "tools/convert/Batch.h"
#include "tools/convert/ConvertReport.h"
#include "tools/files/OutputFile.h"
#include "tools/frames/Formats.h"
#include "tools/frames/FrameOptions.h"

namespace kvx::tool {
namespace {

constexpr const char* kFooter = R"(Size and format are taken from the options; else from a sidecar, FRAME.json or the
frame's name with .json as its extension; else from names such as
scene_1920x1200_BayerRG12.raw. PGM, PNG and TIFF files (grey, 8 or 16 bits) are
recognised by their content and know their size; their values are right-aligned.

Every frame becomes a picture of 8 bits (--to RGB8) or 16 (--to RGB16, or RGB10 and
so on), always with the full range, so that white is white. The colours in the file are
right for RGB and BGR alike.

A finish, asked for by any of --white-balance, --black-level, --white-level, --matrix
and --tone, takes what these options leave open from the sidecar. "auto" is white-patch.
Without a finish values stay linear; TrueSense frames, taken for linear light, then go
through the component's tone curve and colour matrix (--set RR=1 and so on change it).

Of several frames a failing one does not stop the others. --json prints a line for each
frame when it is done: an object with input, output, status (converted or failed),
seconds, and format, width, height, algorithm, gains, inferred; or exitCode and error.

Examples:
  kvx-demosaic convert scene_1920x1200_BayerRG12.raw scene.png
  kvx-demosaic convert frame.raw frame.png --white-balance auto --tone srgb
  kvx-demosaic convert *.raw --output pictures/
  kvx-demosaic convert *.raw --output 'pictures/{stem}.tif' --to RGB16 --algorithm ipp
  grab | kvx-demosaic convert - - --format BayerRG8 --width 640 --height 480 | display)";

constexpr uint64_t kMaximumThreads = 1024;

struct ConvertOptions {
    std::vector<std::string> files;
    std::string output;
    std::string destination = "RGB8";
    ConvertSettings settings;
    std::optional<uint64_t> jobs;
    std::optional<uint64_t> threads;
    bool asJson = false;
};

frame::Format RequireDestination(const std::string& name) {
    const frame::Format format = RequireFormat(name);
    if (!IsConvertDestination(format)) {
        Fail(ExitCode::Usage, "--to {}: convert makes RGB8 to RGB16 and BGR8 to BGR16 only", name);
    }
    return format;
}

void Convert(ConvertOptions& options) {
    const std::vector<FileTask> tasks = PlanFiles(options.files, options.output);
    options.settings.destination = RequireDestination(options.destination);
    if (options.asJson && tasks.front().output == "-") {
        Fail(ExitCode::Usage, "--json: standard output takes the picture already: give the picture a file");
    }
    if (options.output.ends_with('/')) MakeDirectory(options.output);
    const Workforce workforce = ShareThreads(tasks.size(), static_cast<int>(options.jobs.value_or(0)),
                                             static_cast<int>(options.threads.value_or(0)));
    options.settings.threads = workforce.threads;
    cv::setNumThreads(workforce.threads);

    std::vector<FileReport> reports;
    {
        Progress progress(tasks.size());
        reports = RunBatch(tasks, options.settings, workforce.jobs, [&](const FileReport& report) {
            if (options.asJson) {
                PrintText(ReportLine(report));
            }
            progress.Advance();
        });
    }
    if (const ExitCode code = Conclude(reports); code != ExitCode::Success) {
        throw CLI::RuntimeError(static_cast<int>(code));
    }
}

void AddOutputOptions(CLI::App& command, ConvertOptions& options) {
    command
        .add_option("-o,--output", options.output,
                    "Directory (with / made where missing), pattern with {stem}, or picture; then all FILES are frames")
        ->type_name("OUT");
    command.add_option("--to", options.destination, "Format of the picture; default: RGB8")->type_name("NAME");
    command
        .add_option_function<std::string>(
            "--crop", [&options](const std::string& text) { options.settings.crop = ParseRegion("--crop", text); },
            "Convert this part of the frame only")
        ->type_name("X,Y,W,H")
        ->allow_extra_args(false);
    AddChoice<std::optional<int>, int>(command, "--flip", options.settings.flip,
                                       {{"vertical", 0}, {"horizontal", 1}, {"both", -1}},
                                       "Mirror the picture: horizontal, vertical or both");
    command.add_flag("--json", options.asJson, "Print a line of JSON about each frame");
}

}  // namespace

void AddConvertCommand(CLI::App& tool) {
    const auto options = std::make_shared<ConvertOptions>();
    CLI::App* command = tool.add_subcommand("convert", "Convert raw frames to colour pictures");
    command
        ->add_option("FILES", options->files,
                     "IN OUT: a headerless raw, PGM, PNG or TIFF file, and a .png, .tif, .tiff, .ppm or .pnm file; - "
                     "is standard input, and output as PPM. With --output: frames")
        ->required();
    AddOutputOptions(*command, *options);
    AddFrameOptions(*command, options->settings.request);
    AddFinishOptions(*command, options->settings.finish);
    command
        ->add_option("--algorithm", options->settings.algorithm,
                     "Bayer: bilinear (0, default), ipp (1), edge-aware (2); TrueSense: fast (0, default), "
                     "simple (1), bayer-like (2), kodak-like (3) or kodak (4); or the number; wins over --set")
        ->type_name("NAME|N");
    command->add_option("--set", options->settings.settings, "Set a parameter of the component; repeatable, see params")
        ->type_name("PARAM=VALUE")
        ->allow_extra_args(false);
    AddNumber(*command, "--jobs", options->jobs, "Frames to work on at a time; 0, the default, is one for each thread",
              kMaximumThreads);
    AddNumber(*command, "--threads", options->threads, "Threads to work with; 0, the default, is one for each core",
              kMaximumThreads);
    command->footer(kFooter);
    command->callback([options] { Convert(*options); });
}

}  // namespace kvx::tool
