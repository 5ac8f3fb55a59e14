#include "tools/tune/TuneSettings.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

#include "frame/finish/FinishLimits.h"
#include "tools/convert/ConverterOptions.h"

namespace kvx::tool {
namespace {

using Json = nlohmann::ordered_json;

/** How the page asks for a value. */
struct Control {
    const char* option;
    const char* label;
    const char* group;
    const char* kind;  ///< "words", "number", "numbers", "place" or "flag"
    std::vector<const char*> words;
    double minimum = 0, maximum = 0, step = 0;  ///< of a slider; other values may be typed
    size_t count = 1;                           ///< of numbers
};

const std::vector<Control>& Controls() {
    static const std::vector<Control> controls = {
        {"look", "Look", "Method", "words", {"natural"}},
        {"linear", "Keep values linear", "Method", "flag", {"on"}},
        {"algorithm", "Algorithm", "Method", "words", {}},
        {"black-level", "Black level", "Levels", "number", {}, 0, frame::kLargestLevel, 0.5},
        {"white-level", "White level", "Levels", "number", {}, 0, frame::kLargestLevel, 1},
        {"white-balance",
         "White balance",
         "Light",
         "numbers",
         {"auto", "grey-world", "white-patch", "sidecar"},
         0.25,
         4,
         0.01,
         3},
        {"white-balance-from", "Grey place", "Light", "place", {}},
        {"exposure", "Exposure (EV)", "Light", "number", {"auto"}, -3, 6, 0.05},
        {"tone", "Tone curve", "Light", "words", {"linear", "srgb"}},
        {"matrix", "Colour matrix", "Colour", "numbers", {}, -2, 3, 0.01, 9},
        {"camera", "Camera profile", "Camera", "words", {"off"}},
        {"defects", "Defective pixels", "Camera", "words", {"listed", "auto"}},
        {"analog-gain", "Analog gain (noise)", "Camera", "number", {}, 0, 64, 0.1},
    };
    return controls;
}

/** The options of `convert` that settings may have. */
struct OptionParser {
    explicit OptionParser(ConvertSettings& settings) {
        AddFinishOptions(app, settings.finish);
        AddConverterOptions(app, settings);
    }
    CLI::App app;
};

const std::string& TextOf(const Json& value, const std::string& key) {
    if (!value.is_string()) {
        Fail(ExitCode::Usage, "settings: \"{}\" is not a text", key);
    }
    return value.get_ref<const std::string&>();
}

std::vector<std::string> ArgumentsOf(const Json& settings) {
    std::vector<std::string> arguments;
    for (const auto& [key, value] : settings.items()) {
        const std::string option = key;
        const auto control = std::ranges::find_if(Controls(), [&](const Control& c) { return option == c.option; });
        if (option == "set" && value.is_object()) {
            for (const auto& [name, number] : value.items()) {
                arguments.push_back("--set=" + name + "=" + TextOf(number, name));
            }
        } else if (control == Controls().end()) {
            Fail(ExitCode::Usage, "settings: there is no \"{}\"", option);
        } else if (option != "camera") {
            const bool isFlag = std::string_view(control->kind) == "flag";
            arguments.push_back("--" + option + (isFlag ? "" : "=" + TextOf(value, option)));
        }
    }
    return arguments;
}

}  // namespace

TuneSettings ReadSettings(const std::string& json, const FrameRequest& request,
                          const std::shared_ptr<const frame::CameraProfile>& camera) {
    const Json given = Json::parse(json.empty() ? "{}" : json, nullptr, /*allow_exceptions=*/false);
    if (!given.is_object()) {
        Fail(ExitCode::Usage, "settings: are not a JSON object");
    }
    TuneSettings settings;
    settings.arguments = ArgumentsOf(given);
    settings.convert.request = request;
    OptionParser parser(settings.convert);
    try {
        parser.app.parse(std::vector<std::string>(settings.arguments.rbegin(), settings.arguments.rend()));
    } catch (const CLI::ParseError& error) {
        Fail(ExitCode::Usage, "settings: {}", error.what());
    }
    if (given.value("camera", "on") != "off") {
        settings.convert.finish.camera = camera;
    }
    return settings;
}

Json ControlsJson(const frame::Format& format, bool hasCamera) {
    ConvertSettings unused;
    const OptionParser parser(unused);
    Json rows = Json::array();
    for (const Control& control : Controls()) {
        const std::string option = control.option;
        if (option == "camera" && !hasCamera) continue;
        Json words = control.words;
        if (option == "algorithm") {
            for (const frame::Algorithm& algorithm : frame::AlgorithmsOf(format.family)) {
                words.push_back(algorithm.name);
            }
        }
        rows.push_back({{"option", option},
                        {"label", control.label},
                        {"group", control.group},
                        {"kind", control.kind},
                        {"words", std::move(words)},
                        {"minimum", control.minimum},
                        {"maximum", std::min<double>(control.maximum, frame::White(format))},
                        {"step", control.step},
                        {"count", control.count},
                        {"help", parser.app.get_option("--" + option)->get_description()}});
    }
    return rows;
}

}  // namespace kvx::tool
