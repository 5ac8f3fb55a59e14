#include "tools/commands/Commands.h"

#include <memory>

#include "tools/console/Arguments.h"
#include "tools/files/InputFile.h"
#include "tools/files/OutputFile.h"
#include "tools/files/PictureDecoder.h"
#include "tools/frames/Formats.h"
#include "tools/frames/FrameWriter.h"
#include "tools/frames/Mosaic.h"

namespace kvx::tool {
namespace {

constexpr const char* kFooter =
    R"(The format is any mono, Bayer or TrueSense format, packed or not. Clear and mono sites
take the mean of red, green and blue, or the mean that --pan-weights gives. Rows have no
padding. RAW.json, written next to the frame, gives other commands its format and size.
TrueSense frames are converted as linear light: --linear makes such frames.

The noise is that of the noise model in the default TrueSense parameters, calibrated for
gains from 11.04 to 36.77 and constant beyond them. The gain does not change the signal.

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
    bool hasSidecar = true;
};

frame::Sensor SensorOf(const MosaicOptions& options) {
    if (options.seed && !options.analogGain) {
        Fail(ExitCode::Usage, "--seed: needs --analog-gain, without which there is no noise");
    }
    frame::Sensor sensor;
    sensor.panWeights = ParseWeights("--pan-weights", options.panWeights);
    sensor.isLinear = options.isLinear;
    if (options.analogGain) {
        if (!(*options.analogGain >= 0)) {  // true for NaN, too
            Fail(ExitCode::Usage, "--analog-gain {}: a gain must not be negative", *options.analogGain);
        }
        sensor.noise = frame::NoiseAt(*options.analogGain);
        sensor.noiseSeed = options.seed.value_or(sensor.noiseSeed);
    }
    return sensor;
}

void Mosaic(const MosaicOptions& options) {
    const frame::Format format = RequireFrameFormat("--format", options.format);
    RequireDistinct(options.input, options.output);
    const frame::Sensor sensor = SensorOf(options);
    const Picture picture = DecodePicture(ReadInput(options.input), InputName(options.input));
    WriteFrame({.path = options.output, .layout = format.layout, .hasSidecar = options.hasSidecar},
               MakeMosaic(picture, format, sensor));
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
    command->add_option("--analog-gain", options->analogGain, "Add the noise of this analog gain")->type_name("G");
    AddNumber(*command, "--seed", options->seed, "Seed of the noise; default: 1");
    command->add_flag_callback(
        "--no-sidecar", [options] { options->hasSidecar = false; }, "Do not write the JSON file next to the frame");
    command->footer(kFooter);
    command->callback([options] { Mosaic(*options); });
}

}  // namespace kvx::tool
