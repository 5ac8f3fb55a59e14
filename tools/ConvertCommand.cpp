#include "tools/ConvertCommand.h"

#include <fmt/ranges.h>
#include <omp.h>

#include <memory>

#include "tools/Arguments.h"
#include "tools/Console.h"
#include "tools/FrameConversion.h"
#include "tools/FrameReader.h"
#include "tools/OutputFile.h"
#include "tools/PictureEncoder.h"
#include "tools/ToolError.h"

namespace kvx::tool {
namespace {

constexpr const char* kFooter = R"(Size and format are taken from names such as scene_1920x1200_BayerRG12.raw; PGM,
PNG and TIFF files (grey, 8 or 16 bits) are recognised by their content and know
their size. Options win over the name. A frame's values are right-aligned.

TrueSense frames are taken for linear light: the component applies its tone curve and
colour matrix (--set RR=1 and so on change it).

Conversions: every depth to RGB8 or BGR8; 10 to 16 bits also to the same depth
and to RGB16 or BGR16. Results of 10 to 14 bits are scaled to the full 16-bit
range of the picture file, so that white is white: v * 65535 / (2^n - 1), rounded.
The colours in the file are right for RGB and BGR alike.

Examples:
  kvx-demosaic convert scene_1920x1200_BayerRG12.raw scene.png
  kvx-demosaic convert frame.pgm frame.tif --format BayerGB10 --to RGB10 --algorithm edge-aware
  grab | kvx-demosaic convert - - --format BayerRG8 --width 640 --height 480 | display)";

constexpr uint64_t kMaximumThreads = 1024;

struct ConvertOptions {
    std::string input;
    std::string output;
    std::string format;
    FrameRequest request;
    std::string destination = "RGB8";
    std::string algorithm;
    std::vector<std::string> settings;
    std::optional<uint64_t> threads;
};

void UseThreads(int count) {
    if (count > 0) {
        omp_set_num_threads(count);
        cv::setNumThreads(count);
    }
}

/** Applies "NAME=VALUE" texts in their order. */
void ApplySettings(frame::Converter& converter, const std::vector<std::string>& settings) {
    for (const std::string& setting : settings) {
        const size_t sign = setting.find('=');
        if (sign == std::string::npos || sign == 0) {
            Fail(ExitCode::Usage, "--set: '{}' is not of the form NAME=VALUE", setting);
        }
        OrExit(ExitCode::Library, "--set",
               [&] { converter.SetParameter(setting.substr(0, sign), setting.substr(sign + 1)); });
    }
}

const PixelFormat& RequireDestination(const std::string& name) {
    const PixelFormat& format = RequireFormat(name);
    if (!IsConvertDestination(format)) {
        Fail(ExitCode::Usage, "--to {}: convert makes RGB8 to RGB16 and BGR8 to BGR16 only", name);
    }
    return format;
}

void RequirePair(const PixelFormat& source, const PixelFormat& destination) {
    if (CanConvert(source, destination)) {
        return;
    }
    std::vector<const char*> possible;
    for (const PixelFormat* format : AllFormats()) {
        if (IsConvertDestination(*format) && CanConvert(source, *format)) {
            possible.push_back(format->name);
        }
    }
    Fail(ExitCode::Usage, "--to {}: {} frames become {} only", destination.name, source.name,
         fmt::join(possible, ", "));
}

void Convert(const ConvertOptions& options) {
    const PictureKind kind = PictureKindFor(options.output);
    const PixelFormat& destination = RequireDestination(options.destination);
    FrameRequest request = options.request;
    request.format = options.format.empty() ? nullptr : &RequireFormat(options.format);
    RequireDistinct(options.input, options.output);
    UseThreads(static_cast<int>(options.threads.value_or(0)));

    const FrameInput input = ReadFrame(options.input, request);
    RequirePair(*input.frame.format, destination);
    frame::Converter converter(FamilyOf(*input.frame.format));
    ApplySettings(converter, options.settings);
    if (!options.algorithm.empty()) {
        OrExit(ExitCode::Usage, "--algorithm", [&] { converter.SetAlgorithm(options.algorithm); });
    }
    const Picture picture = ConvertFrame(converter, input.frame, destination, InputName(options.input));
    WriteOutput(options.output, EncodePicture(picture, kind));
    if (!input.inferred.empty()) {
        PrintMessage(fmt::format("{}: {} taken from its name", options.input, input.inferred));
    }
}

}  // namespace

void AddConvertCommand(CLI::App& tool) {
    const auto options = std::make_shared<ConvertOptions>();
    CLI::App* command = tool.add_subcommand("convert", "Convert a raw Bayer or TrueSense frame to a colour picture");
    command->add_option("IN", options->input, "Headerless raw, PGM, PNG or TIFF file; - is standard input")->required();
    command->add_option("OUT", options->output, ".png, .tif, .tiff, .ppm or .pnm; - is standard output, as PPM")
        ->required();
    command->add_option("--format", options->format, "Format of the frame, such as BayerRG12")->type_name("NAME");
    AddNumber(*command, "--width", options->request.width, "Pixels in a row");
    AddNumber(*command, "--height", options->request.height, "Rows");
    AddNumber(*command, "--stride", options->request.stride, "Bytes from row to row; default: rows without padding");
    AddNumber(*command, "--skip-bytes", options->request.skipBytes, "Bytes in front of the first row");
    command->add_option("--to", options->destination, "Format of the picture; default: RGB8")->type_name("NAME");
    command
        ->add_option("--algorithm", options->algorithm,
                     "Bayer: bilinear (0, default), ipp (1), edge-aware (2); TrueSense: fast (0, default), "
                     "simple (1), bayer-like (2), kodak-like (3) or kodak (4); or the number; wins over --set")
        ->type_name("NAME|N");
    command->add_option("--set", options->settings, "Set a parameter of the component; repeatable, see params")
        ->type_name("PARAM=VALUE")
        ->allow_extra_args(false);
    AddNumber(*command, "--threads", options->threads, "Threads to work with; 0, the default, is one for each core",
              kMaximumThreads);
    command->footer(kFooter);
    command->callback([options] { Convert(*options); });
}

}  // namespace kvx::tool
