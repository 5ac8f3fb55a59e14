#include "tools/commands/Commands.h"

#include <memory>

#include "tools/console/Arguments.h"
#include "tools/files/InputFile.h"
#include "tools/files/OutputFile.h"
#include "tools/files/PictureDecoder.h"
#include "tools/frames/Formats.h"
#include "tools/frames/FrameError.h"
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

Faults of a real camera, for calibrate: a black level, light that falls towards the
corners, a fixed pattern, hot pixels (which add 1 to 100 % of white) and dead ones (which
see half of the light or less). Their seed is that of the camera, --seed that of a frame.

Examples:
  kvx-demosaic mosaic picture.png picture_768x512_BayerRG12.raw --format BayerRG12
  kvx-demosaic mosaic picture.png dim.pgm --format TrueSense_BGGR_WBBW_0_12 --analog-gain 23.96
  kvx-demosaic mosaic picture.png faulty.pgm --format BayerRG12 --linear --black-level 64 \
      --corner-light 0.7,0.75,0.65 --hot-pixels 100 --dead-pixels 20 --analog-gain 11.04
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
    std::string cornerLight = "1,1,1";
    std::optional<uint64_t> hotPixels;
    std::optional<uint64_t> deadPixels;
    std::optional<uint64_t> cameraSeed;
    double blackLevel = 0;
    double fixedPattern = 0;
    bool hasSidecar = true;
};

frame::Sensor SensorOf(const MosaicOptions& options) {
    if (options.seed && !options.analogGain) {
        Fail(ExitCode::Usage, "--seed: needs --analog-gain, without which there is no noise");
    }
    frame::Sensor sensor;
    sensor.panWeights = ParseWeights("--pan-weights", options.panWeights);
    sensor.isLinear = options.isLinear;
    sensor.blackLevel = options.blackLevel;
    sensor.cornerLight = ParseNumbers<3>("--corner-light", options.cornerLight);
    sensor.fixedPattern = options.fixedPattern;
    sensor.hotPixels = static_cast<uint32_t>(options.hotPixels.value_or(0));
    sensor.deadPixels = static_cast<uint32_t>(options.deadPixels.value_or(0));
    sensor.patternSeed = options.cameraSeed.value_or(sensor.patternSeed);
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
    const RawFrame frame = WithExitCode(ExitCode::Usage, "mosaic", [&] { return MakeMosaic(picture, format, sensor); });
    WriteFrame({.path = options.output, .layout = format.layout, .hasSidecar = options.hasSidecar}, frame);
}

void AddFaultOptions(CLI::App& command, MosaicOptions& options) {
    command.add_option("--black-level", options.blackLevel, "Sample value without light")->type_name("LEVEL");
    command.add_option("--corner-light", options.cornerLight, "Share of red, green and blue light in the corners")
        ->type_name("R,G,B");
    command
        .add_option("--fixed-pattern", options.fixedPattern, "Standard deviation of what each pixel adds, in samples")
        ->type_name("SAMPLES");
    AddNumber(command, "--hot-pixels", options.hotPixels, "Number of pixels that are bright in the dark", UINT32_MAX);
    AddNumber(command, "--dead-pixels", options.deadPixels, "Number of pixels that see little light", UINT32_MAX);
    AddNumber(command, "--camera-seed", options.cameraSeed, "Seed of fixed pattern, hot and dead pixels; default: 1");
}

}  // namespace

void AddMosaicCommand(CLI::App& tool) {
    const auto options = std::make_shared<MosaicOptions>();
    CLI::App* command = tool.add_subcommand("mosaic", "Make a raw frame from a picture");
    command->add_option("IMAGE", options->input, "PNG, TIFF, JPEG, NumPy, PPM or PGM picture; - is standard input")
        ->required();
    command
        ->add_option("RAW", options->output,
                     "Headerless raw file, or .dng, .npy or .pgm; - is standard output, headerless")
        ->required();
    command->add_option("--format", options->format, "Format of the frame, such as BayerRG12")
        ->type_name("NAME")
        ->required();
    command->add_option("--pan-weights", options->panWeights, "Weights of red, green and blue at clear sites")
        ->type_name("R,G,B");
    command->add_flag("--linear", options->isLinear, "Undo the picture's sRGB encoding first");
    command->add_option("--analog-gain", options->analogGain, "Add the noise of this analog gain")->type_name("G");
    AddNumber(*command, "--seed", options->seed, "Seed of the noise; default: 1");
    AddFaultOptions(*command, *options);
    command->add_flag_callback(
        "--no-sidecar", [options] { options->hasSidecar = false; }, "Do not write the JSON file next to the frame");
    command->footer(kFooter);
    command->callback([options] { Mosaic(*options); });
}

}  // namespace kvx::tool
