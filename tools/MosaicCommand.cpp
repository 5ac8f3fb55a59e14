#include "tools/MosaicCommand.h"

#include <cmath>
#include <filesystem>
#include <memory>

#include "tools/Arguments.h"
#include "tools/Console.h"
#include "tools/FrameName.h"
#include "tools/InputFile.h"
#include "tools/Mosaic.h"
#include "tools/OutputFile.h"
#include "tools/PictureDecoder.h"
#include "tools/PictureEncoder.h"
#include "tools/Pnm.h"
#include "tools/ToolError.h"

namespace kvx::tool {
namespace {

constexpr const char* kFooter = R"(Formats: every unpacked mono, Bayer or TrueSense format; clear and mono sites take
the mean of red, green and blue, or what --pan-weights says. Samples are bytes, or
little-endian 16-bit words with the value right-aligned; rows have no padding.
TrueSense frames are converted as linear light: --linear makes such frames.

Noise is that of the built-in model of the TrueSense parameters, whose calibrated gains go from
11.04 to 36.77; beyond them it stays as it is there. The signal is the picture's at any gain.

Examples:
  kvx-demosaic mosaic picture.png picture_768x512_BayerRG12.raw --format BayerRG12
  kvx-demosaic mosaic picture.png dim.pgm --format TrueSense_BGGR_WBBW_0_12 --analog-gain 23.96
  kvx-demosaic mosaic picture.png - --format BayerGB8 | kvx-demosaic convert - again.png \
      --format BayerGB8 --width 768 --height 512)";

struct MosaicOptions {
    std::string input;
    std::string output;
    std::string format;
    std::string panWeights = "1,1,1";
    bool isLinear = false;
    std::optional<double> analogGain;
    std::optional<uint64_t> seed;
};

Sensor SensorOf(const MosaicOptions& options) {
    Sensor sensor{ParseWeights("--pan-weights", options.panWeights), options.isLinear};
    if (options.analogGain) {
        if (std::isnan(*options.analogGain)) {
            Fail(ExitCode::Usage, "--analog-gain: nan is no gain");
        }
        tagTrueSenseParam params;
        TrueSense_DefaultValues(&params);
        sensor.noise = NoiseAt(params, *options.analogGain);
        sensor.noiseSeed = options.seed.value_or(sensor.noiseSeed);
    }
    return sensor;
}

bool IsPgmName(const std::string& path) {
    return LowerExtension(path) == ".pgm";
}

/** A headerless file is best found again with its layout in its name. */
void SuggestName(const std::string& path, const RawFrame& frame) {
    const FrameName name = ParseFrameName(path);
    const FrameSize size{static_cast<uint64_t>(frame.samples.cols), static_cast<uint64_t>(frame.samples.rows)};
    if (path == "-" || IsPgmName(path) || (name.size == size && name.format == frame.format)) {
        return;
    }
    const std::string stem = std::filesystem::path(path).stem().string();
    PrintMessage(fmt::format("{}: its size and format could be told from a name such as {}", path,
                             MakeFrameName(stem, size, *frame.format)));
}

void Mosaic(const MosaicOptions& options) {
    const PixelFormat& format = RequireFormat(options.format);
    if (!IsUnpackedMosaic(format)) {
        Fail(ExitCode::Usage, "--format {}: mosaic makes unpacked mono, Bayer and TrueSense formats only", format.name);
    }
    RequireDistinct(options.input, options.output);
    const Sensor sensor = SensorOf(options);
    const Picture picture = DecodePicture(ReadInput(options.input), InputName(options.input));
    const RawFrame frame = MakeMosaic(picture, format, sensor);
    WriteOutput(options.output, IsPgmName(options.output) ? EncodePnm({frame.samples, LargestSample(format)})
                                                          : EncodeRaw(frame.samples));
    SuggestName(options.output, frame);
}

}  // namespace

void AddMosaicCommand(CLI::App& tool) {
    const auto options = std::make_shared<MosaicOptions>();
    CLI::App* command = tool.add_subcommand("mosaic", "Make a raw frame from a picture");
    command->add_option("IMAGE", options->input, "PNG, TIFF, PPM or PGM picture; - is standard input")->required();
    command->add_option("RAW", options->output, "Headerless raw file, or .pgm; - is standard output, headerless")
        ->required();
    command->add_option("--format", options->format, "Format of the frame, such as BayerRG12")
        ->type_name("NAME")
        ->required();
    command->add_option("--pan-weights", options->panWeights, "Weights of red, green and blue at clear sites")
        ->type_name("R,G,B");
    command->add_flag("--linear", options->isLinear, "Undo the picture's sRGB encoding first");
    CLI::Option* gain = command->add_option("--analog-gain", options->analogGain, "Add the noise of this analog gain");
    gain->type_name("G")->check(CLI::NonNegativeNumber);
    AddNumber(*command, "--seed", options->seed, "Seed of the noise: other seeds, other noise (default 1)");
    command->get_option("--seed")->needs(gain);
    command->footer(kFooter);
    command->callback([options] { Mosaic(*options); });
}

}  // namespace kvx::tool
