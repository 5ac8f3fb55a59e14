#include "tools/tune/Exports.h"

#include <fmt/ranges.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

namespace kvx::tool {
namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

/** For a shell. */
std::string Quoted(const std::string& text) {
    const bool isPlain = !text.empty() && std::ranges::all_of(text, [](unsigned char letter) {
        return std::isalnum(letter) != 0 || std::string_view("-_./=,:+%@").find(letter) != std::string_view::npos;
    });
    if (isPlain) return text;
    std::string quoted = "'";
    for (const char letter : text) quoted += letter == '\'' ? std::string("'\\''") : std::string(1, letter);
    return quoted + "'";
}

/** A literal of Python, and of JSON. */
std::string Literal(const std::string& text) {
    return nlohmann::json(text).dump(-1, ' ', true, nlohmann::json::error_handler_t::replace);
}

bool IsGiven(const frame::Levels& levels) {
    return !(levels == frame::Levels());
}

bool IsIdentity(const std::array<double, 9>& matrix) {
    return matrix == frame::Finish().matrix;
}

std::string LevelsText(const frame::Levels& levels) {
    const auto& values = levels.ofFilters;
    return levels == frame::Levels(values[0]) ? fmt::format("{}", values[0])
                                              : fmt::format("{}", fmt::join(values, ","));
}

/**
 * The parts of a finish that are not what they are anyway; lists without brackets. With a camera, whose parts would
 * replace those that nobody gives, all.
 */
Pairs FinishTexts(const std::optional<frame::Finish>& finish, bool hasCamera, double white) {
    if (!finish) return {};
    constexpr std::array kMethods = {"", "grey-world", "white-patch", "auto"};
    Pairs texts;
    const frame::Levels whiteLevel = IsGiven(finish->whiteLevel) ? finish->whiteLevel : frame::Levels(white);
    if (hasCamera || IsGiven(finish->blackLevel)) texts.emplace_back("black_level", LevelsText(finish->blackLevel));
    if (hasCamera || IsGiven(finish->whiteLevel)) texts.emplace_back("white_level", LevelsText(whiteLevel));
    const frame::Gains& gains = finish->gains;
    if (finish->whiteBalance != frame::WhiteBalance::Given) {
        texts.emplace_back("white_balance", kMethods[static_cast<size_t>(finish->whiteBalance)]);
    } else if (hasCamera || gains.red != 1 || gains.green != 1 || gains.blue != 1) {
        texts.emplace_back("white_balance", fmt::format("{},{},{}", gains.red, gains.green, gains.blue));
    }
    if (hasCamera || !IsIdentity(finish->matrix)) {
        texts.emplace_back("matrix", fmt::format("{}", fmt::join(finish->matrix, ",")));
    }
    if (finish->autoExposure || finish->exposure != 0) {
        texts.emplace_back("exposure", finish->autoExposure ? "auto" : fmt::format("{}", finish->exposure));
    }
    texts.emplace_back("tone", finish->tone == frame::ToneCurve::Srgb ? "srgb" : "linear");
    return texts;
}

/** Everything that front ends with named settings need. */
Pairs NamedSettings(const TunedConversion& conversion, const std::string& cameraPath) {
    const ConvertSettings& settings = conversion.Settings().convert;
    Pairs texts;
    if (!settings.algorithm.empty()) texts.emplace_back("algorithm", settings.algorithm);
    const double white = frame::White(conversion.Frame().input.frame.format);
    for (auto& text : FinishTexts(conversion.Plan().finish, settings.finish.camera != nullptr, white)) {
        texts.push_back(std::move(text));
    }
    if (settings.analogGain) texts.emplace_back("analog_gain", fmt::format("{}", *settings.analogGain));
    if (settings.finish.camera) texts.emplace_back("camera", cameraPath);
    if (settings.finish.defects == frame::Defects::Auto) texts.emplace_back("defects", "auto");
    return texts;
}

/** A property of the file; 0 if nobody gave it. */
uint64_t FactOf(const FrameInput& input, std::string_view name) {
    for (const FrameFact& fact : input.facts) {
        if (fact.name == name) return std::stoull(fact.value);
    }
    return 0;
}

uint64_t BytesOfRow(const FrameInput& input) {
    const uint64_t stride = FactOf(input, "stride");
    return stride > 0 ? stride : frame::RowBytes(input.fileFormat, static_cast<uint32_t>(input.frame.samples.cols));
}

/** Whether the file is nothing but rows of samples. */
bool IsHeaderless(const TunedFrame& frame) {
    std::error_code error;
    return std::filesystem::file_size(frame.path, error) ==
           FactOf(frame.input, "offset") + BytesOfRow(frame.input) * frame.input.frame.samples.rows;
}

std::string CommandLine(const TunedConversion& conversion, const std::string& cameraPath) {
    const TunedFrame& frame = conversion.Frame();
    const FrameRequest& request = conversion.Settings().convert.request;
    std::string line = "kvx-demosaic convert " + Quoted(frame.path) + " " +
                       Quoted(std::filesystem::path(frame.path).stem().string() + ".png");
    const auto add = [&line](const std::string& argument) { line += " " + Quoted(argument); };
    if (request.format) add("--format=" + frame::Name(*request.format));
    for (const auto& [option, number] : {std::pair("--width=", request.width),
                                         {"--height=", request.height},
                                         {"--stride=", request.stride},
                                         {"--skip-bytes=", request.skipBytes},
                                         {"--frame=", request.frame}}) {
        if (number) add(option + std::to_string(*number));
    }
    if (!request.useSidecar) add("--no-sidecar");
    if (conversion.Settings().convert.finish.camera) add("--camera=" + cameraPath);
    for (const std::string& argument : conversion.Settings().arguments) add(argument);
    return line;
}

std::string Python(const TunedConversion& conversion, const std::string& cameraPath) {
    const FrameInput& input = conversion.Frame().input;
    if (!IsHeaderless(conversion.Frame())) return "";
    const frame::Format& format = input.fileFormat;
    const int width = input.frame.samples.cols, height = input.frame.samples.rows;
    const bool isPacked = frame::Unpacked(format) != format, isWide = !isPacked && format.bits > 8;
    const uint64_t offset = FactOf(input, "offset"), items = BytesOfRow(input) / (isWide ? 2 : 1);
    std::string text = "import kvxdemosaicing as kvx, numpy as np\n\n";
    text += fmt::format("frame = np.fromfile({}, {}, count={}{}).reshape({}, {}){}\n", Literal(conversion.Frame().path),
                        isWide ? "np.uint16" : "np.uint8", height * items,
                        offset > 0 ? fmt::format(", offset={}", offset) : "", height, items,
                        isPacked || items == static_cast<uint64_t>(width) ? "" : fmt::format("[:, :{}]", width));
    text += fmt::format("picture = kvx.convert(frame, {}{}", Literal(frame::Name(format)),
                        isPacked ? fmt::format(", width={}", width) : "");
    for (const auto& [name, value] : NamedSettings(conversion, cameraPath)) {
        const bool isNumber = value.find_first_not_of("0123456789.,-+e") == std::string::npos && !value.empty();
        const bool isList = isNumber && value.find(',') != std::string::npos;
        text += fmt::format(", {}={}", name, isList ? "[" + value + "]" : isNumber ? value : Literal(value));
    }
    for (const std::string& setting : conversion.Settings().convert.settings) text += ", " + setting;
    return text + ")\n";
}

std::string GStreamer(const TunedConversion& conversion, const std::string& cameraPath) {
    const FrameInput& input = conversion.Frame().input;
    const frame::Format& format = input.fileFormat;
    const bool isBayer = format.family == frame::Family::Bayer;
    if (!IsHeaderless(conversion.Frame()) || FactOf(input, "offset") > 0 || format.family == frame::Family::Mono)
        return "";
    std::string caps = frame::Name(format);
    std::string properties;
    if (isBayer) {
        constexpr std::array kPackings = {"", "msb", "", "pfnc", "gige", "mipi"};
        const std::string packing = kPackings[static_cast<size_t>(format.layout)];
        if (!packing.empty()) properties += " packing=" + packing;
        // Big-endian words have caps of their own.
        const bool isBigEndian = format.layout == frame::Layout::BigEndian;
        for (const frame::FormatName& name : frame::NamesOf(isBigEndian ? format : frame::Unpacked(format))) {
            if (name.scheme == frame::Scheme::GStreamer) caps = name.name;
        }
    }
    const uint64_t stride = FactOf(input, "stride");
    const int width = input.frame.samples.cols, height = input.frame.samples.rows;
    if (stride > 0) properties += fmt::format(" stride={}", stride);
    for (auto [name, value] : NamedSettings(conversion, cameraPath)) {
        std::ranges::replace(name, '_', '-');
        properties += " " + Quoted(fmt::format("{}={}", name, value));
    }
    const std::vector<std::string>& parameters = conversion.Settings().convert.settings;
    if (!parameters.empty()) properties += fmt::format(" parameters=\"p,{}\"", fmt::join(parameters, ","));
    return fmt::format(
        "gst-launch-1.0 filesrc location={} blocksize={} ! {},format={},width={},height={} ! kvxdemosaic{} "
        "! pnmenc ! filesink location={}",
        Quoted(conversion.Frame().path), BytesOfRow(input) * height,
        isBayer ? "video/x-bayer" : "video/x-kvx-truesense", caps, width, height, properties,
        Quoted(std::filesystem::path(conversion.Frame().path).stem().string() + ".ppm"));
}

}  // namespace

Sidecar SidecarOf(const TunedConversion& conversion) {
    const FrameInput& input = conversion.Frame().input;
    Sidecar sidecar = input.sidecar;
    sidecar.format = input.fileFormat;
    sidecar.width = input.frame.samples.cols;
    sidecar.height = input.frame.samples.rows;
    sidecar.blackLevel.reset();
    sidecar.whiteLevel.reset();
    sidecar.gains.reset();
    sidecar.matrix.reset();
    if (const std::optional<frame::Finish>& finish = conversion.Fixed()) {
        if (IsGiven(finish->blackLevel)) sidecar.blackLevel = finish->blackLevel;
        if (IsGiven(finish->whiteLevel)) sidecar.whiteLevel = finish->whiteLevel;
        sidecar.gains = finish->gains;
        if (!IsIdentity(finish->matrix)) sidecar.matrix = finish->matrix;
    }
    return sidecar;
}

frame::CameraProfile ProfileOf(const TunedConversion& conversion) {
    const auto& camera = conversion.Settings().convert.finish.camera;
    const Sidecar sidecar = SidecarOf(conversion);
    frame::CameraProfile profile = camera ? *camera : frame::CameraProfile();
    if (!profile.format) {
        profile.format = conversion.Frame().input.frame.format;
        profile.width = static_cast<uint32_t>(*sidecar.width);
        profile.height = static_cast<uint32_t>(*sidecar.height);
    }
    // The levels of a profile are those of its own depth.
    const double scale = std::exp2(profile.format->bits - conversion.Frame().input.frame.format.bits);
    const auto scaled = [scale](std::optional<frame::Levels> levels) {
        if (levels) {
            for (double& level : levels->ofFilters) level *= scale;
        }
        return levels;
    };
    profile.blackLevel = scaled(sidecar.blackLevel);
    profile.whiteLevel = scaled(sidecar.whiteLevel);
    profile.gains = sidecar.gains;
    profile.matrix = sidecar.matrix;
    return profile;
}

Exports ExportsOf(const TunedConversion& conversion, const std::string& cameraPath) {
    return {CommandLine(conversion, cameraPath), Python(conversion, cameraPath), GStreamer(conversion, cameraPath)};
}

}  // namespace kvx::tool
