#include "tools/commands/Commands.h"

#include <algorithm>
#include <memory>

#include "tools/console/Arguments.h"
#include "tools/console/Console.h"
#include "tools/console/Progress.h"
#include "tools/convert/Batch.h"
#include "tools/convert/ConvertReport.h"
#include "tools/convert/ConverterOptions.h"
#include "tools/convert/DngFacts.h"
#include "tools/files/OutputFile.h"
#include "tools/frames/Formats.h"
#include "tools/frames/FrameOptions.h"

namespace kvx::tool {
namespace {

constexpr const char* kFooter =
    R"(Size and format come from the options, then from a sidecar (FRAME.json, or the frame's
name with the extension .json), then from file names such as
scene_1920x1200_BayerRG12.raw. PGM, PNG, TIFF and NumPy files (grey, 8 or 16 bits) are
recognised by their content and contain their size; their values are right-aligned.
Camera raw files (of Bayer sensors, as LibRaw decodes them) and DNG files also contain
format, levels, balance, matrix and orientation, which apply like those of a sidecar.

A .dng file holds the frame itself and what is known of it, for programs that develop
photographs; options for levels, balance, matrix and --camera add to that.

The picture has 8 bits per sample (--to RGB8) or 16 (--to RGB16, RGB10 and so on) and
always uses the full range, so that white is white. RGB and BGR give the same file.

--look natural makes a picture for display: the gains of the sidecar or measured ones, the
exposure that uses the range, and the sRGB curve. Black and white level, gains and matrix
of the sidecar always apply; options override them, and --linear switches all off. Four
levels are those of red, green in red rows, green in blue rows and blue; for TrueSense of
red, green, blue and clear. Without any of these, values stay linear; TrueSense frames,
which hold linear light, then go through the component's tone curve and colour matrix
(--set RR=1 and so on change it).

When one of several frames fails, the others are still converted. --json prints a line
for each frame when it is done: an object with input, output, frame (with --frames), status
(converted or failed), seconds, and format, width, height, algorithm, gains, exposure, inferred, hints;
or exitCode and error.

Examples:
  kvx-demosaic convert scene_1920x1200_BayerRG12.raw scene.png
  kvx-demosaic convert frame.raw frame.png --look natural
  kvx-demosaic convert *.raw --output pictures/
  kvx-demosaic convert sequence_640x480_BayerRG8.raw --frames --output pictures/
  kvx-demosaic convert *.raw --output 'pictures/{stem}.tif' --to RGB16 --algorithm ipp
  kvx-demosaic convert photo.nef photo.png --look natural --algorithm ipp
  grab | kvx-demosaic convert - - --format BayerRG8 --width 640 --height 480 | display)";

struct ConvertOptions {
    std::vector<std::string> files;
    std::string output;
    std::optional<std::string> destination;
    ConvertSettings settings;
    std::optional<uint64_t> quality;
    bool hasFrames = false;
    std::optional<uint64_t> jobs;
    std::optional<uint64_t> threads;
    bool asJson = false;
};

frame::Format RequireDestination(const std::string& name) {
    const frame::Format format = RequireFormat(name);
    if (!IsConvertDestination(format)) {
        Fail(ExitCode::Usage, "--to {}: convert only makes RGB8 to RGB16 and BGR8 to BGR16", name);
    }
    return format;
}

void Convert(ConvertOptions& options) {
    std::function<uint64_t(const std::string&)> countFrames;
    if (options.hasFrames) {
        countFrames = [&](const std::string& path) { return CountFrames(path, options.settings.request); };
    }
    const std::vector<FileTask> tasks = PlanFiles(options.files, options.output, countFrames);
    if (options.quality && tasks.front().kind != PictureKind::Jpeg) {
        Fail(ExitCode::Usage, "--quality: is for JPEG files: write a .jpg file");
    }
    options.settings.jpegQuality = static_cast<int>(options.quality.value_or(kJpegQuality));
    options.settings.destination = RequireDestination(options.destination.value_or("RGB8"));
    if (!tasks.front().kind && (options.destination || AsksForPicture(options.settings))) {
        Fail(ExitCode::Usage,
             "{}: a DNG file holds the frame itself: leave out --to, --look, --exposure, --tone, --algorithm, "
             "--analog-gain, --set, --flip and --defects",
             tasks.front().output);
    }
    if (options.asJson && tasks.front().output == "-") {
        Fail(ExitCode::Usage, "--json: standard output already takes the picture: write the picture to a file");
    }
    if (options.output.ends_with('/')) MakeDirectory(options.output);
    const Workforce workforce = ShareThreads(tasks.size(), static_cast<int>(options.jobs.value_or(0)),
                                             static_cast<int>(options.threads.value_or(0)));
    options.settings.threads = workforce.threads;
    // More than there are processors would only make its thread pool complain.
    cv::setNumThreads(std::min(workforce.threads, cv::getNumberOfCPUs()));

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
                    "Directory (created if it ends in /), pattern with {stem} (and {frame}), or picture; all FILES are "
                    "then frames")
        ->type_name("OUT");
    command.add_option("--to", options.destination, "Format of the picture; default: RGB8")->type_name("NAME");
    AddText(
        command, "--crop", [&options](const std::string& text) { options.settings.crop = ParseRegion("--crop", text); },
        "X,Y,W,H", "Convert only this part of the frame");
    AddChoice<std::optional<int>, int>(command, "--flip", options.settings.flip,
                                       {{"vertical", 0}, {"horizontal", 1}, {"both", -1}},
                                       "Mirror the picture: horizontal, vertical or both");
    AddNumber(command, "--quality", options.quality, "Quality of a JPEG file, 1 to 100; default: 95", 100);
    command.add_flag("--frames", options.hasFrames, "Convert all frames of headerless files that have several");
    command.add_flag("--json", options.asJson, "Print a line of JSON for each frame");
}

}  // namespace

void AddConvertCommand(CLI::App& tool) {
    const auto options = std::make_shared<ConvertOptions>();
    CLI::App* command = tool.add_subcommand("convert", "Convert raw frames to colour pictures");
    command
        ->add_option(
            "FILES", options->files,
            "IN OUT: a headerless raw, camera raw, DNG, PGM, PNG, TIFF or NumPy file, and a .png, .jpg, .tif, .npy, "
            ".ppm or .dng file; - is standard input, or standard output as PPM. With --output: frames only")
        ->required();
    AddOutputOptions(*command, *options);
    AddFrameOptions(*command, options->settings.request);
    AddFinishOptions(*command, options->settings.finish);
    AddConverterOptions(*command, options->settings);
    AddNumber(*command, "--jobs", options->jobs, "Frames to convert at the same time; 0, the default: one per thread",
              frame::kMaxThreads);
    AddNumber(*command, "--threads", options->threads, "Number of threads; 0, the default: one per core",
              frame::kMaxThreads);
    command->footer(kFooter);
    command->callback([options] { Convert(*options); });
}

}  // namespace kvx::tool
