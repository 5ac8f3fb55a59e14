#include "tools/convert/ConverterOptions.h"

#include "tools/frames/FrameError.h"

namespace kvx::tool {
namespace {

/** Applies "NAME=VALUE" texts in their order. */
void ApplySettings(frame::Converter& converter, const std::vector<std::string>& settings) {
    for (const std::string& setting : settings) {
        const size_t sign = setting.find('=');
        if (sign == std::string::npos || sign == 0) {
            Fail(ExitCode::Usage, "--set: '{}' is not of the form NAME=VALUE", setting);
        }
        WithExitCode(ExitCode::Library, "--set",
                     [&] { converter.SetParameter(setting.substr(0, sign), setting.substr(sign + 1)); });
    }
}

}  // namespace

void AddConverterOptions(CLI::App& command, ConvertSettings& settings) {
    command
        .add_option("--algorithm", settings.algorithm,
                    "Bayer: bilinear (0, default), ipp (1), edge-aware (2); TrueSense: fast (0, default), "
                    "simple (1), bayer-like (2), kodak-like (3) or kodak (4); or the number; both: swift, fine; "
                    "overrides --set")
        ->type_name("NAME|N");
    command
        .add_option("--analog-gain", settings.analogGain,
                    "Gain of the sensor, whose noise fine and the noise-reducing algorithms remove; fine removes none "
                    "without it")
        ->type_name("G");
    command.add_option("--set", settings.settings, "Set a parameter of the component (see params); repeatable")
        ->type_name("PARAM=VALUE")
        ->allow_extra_args(false);
}

frame::Converter MakeConverter(const ConvertSettings& settings, frame::Family family,
                               const std::optional<frame::Site>& origin) {
    frame::Converter converter(family);
    ApplySettings(converter, settings.settings);
    if (!settings.algorithm.empty()) {
        WithExitCode(ExitCode::Usage, "--algorithm", [&] { converter.SetAlgorithm(settings.algorithm); });
    }
    if (settings.analogGain) {
        WithExitCode(ExitCode::Usage, "--analog-gain", [&] { converter.SetAnalogGain(*settings.analogGain); });
    }
    converter.SetCamera(settings.finish.camera, origin);
    converter.SetDefects(settings.finish.defects);
    converter.SetThreads(settings.threads);
    return converter;
}

}  // namespace kvx::tool
