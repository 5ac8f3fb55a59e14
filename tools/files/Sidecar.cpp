#include "tools/files/Sidecar.h"

#include <fmt/ranges.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "frame/formats/NearestNames.h"
#include "tools/ToolError.h"
#include "tools/files/InputFile.h"
#include "tools/files/OutputFile.h"

namespace kvx::tool {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

/** Far more than sidecars nest: destroying values takes stack for each level. */
constexpr int kDeepestLevel = 64;
constexpr InputLimit kSidecarLimit{size_t{1} << 24, ExitCode::Input, "no sidecar is that large"};
constexpr size_t kShownCharacters = 40;
constexpr std::array<std::string_view, 12> kKeys = {
    "format",      "bayer_pattern", "bits_per_sample",     "width",         "height",     "stride", "offset",
    "black_level", "white_level",   "white_balance_gains", "colour_matrix", "orientation"};

/** On one line and not too long, whatever is in it. */
std::string Quoted(const std::string& text) {
    const std::string start = text.substr(0, kShownCharacters) + (text.size() > kShownCharacters ? "..." : "");
    return Json(start).dump(-1, ' ', false, Json::error_handler_t::replace);
}

/** The value if it is short, else its type. */
std::string Described(const Json& value) {
    return value.is_string()       ? Quoted(value.get_ref<const std::string&>())
           : value.is_structured() ? fmt::format("an {}", value.type_name())
                                   : value.dump();
}

/** Looks up keys; errors name file and key. */
class SidecarReader {
public:
    SidecarReader(const std::string& path, const Bytes& content) : m_path(path), m_json(Parsed(content)) {
        if (!m_json.is_object()) {
            FailBroken("is not a JSON object");
        }
    }

    std::optional<uint64_t> Number(const char* key) const {
        const Json* value = Find(key);
        if (value != nullptr && !value->is_number_unsigned()) {
            FailBroken(fmt::format("\"{}\" is {}, not a whole number", key, Described(*value)));
        }
        return value == nullptr ? std::nullopt : std::optional(value->get<uint64_t>());
    }

    std::optional<std::string> Text(const char* key) const {
        const Json* value = Find(key);
        if (value != nullptr && !value->is_string()) {
            FailBroken(fmt::format("\"{}\" is {}, not a string", key, Described(*value)));
        }
        return value == nullptr ? std::nullopt : std::optional(value->get<std::string>());
    }

    std::optional<frame::Format> Format() const {
        if (const std::optional<std::string> name = Text("format")) {
            return Named("format", *name);
        }
        const std::optional<std::string> pattern = Text("bayer_pattern");
        const std::optional<uint64_t> bits = Number("bits_per_sample");
        if (!pattern || !bits) {
            return std::nullopt;
        }
        if (pattern->size() != 4) {
            FailBroken(fmt::format("\"bayer_pattern\" is {}: expected four letters such as RGGB", Quoted(*pattern)));
        }
        return Named("bayer_pattern", fmt::format("CFA_{}_{}_{}", pattern->substr(0, 2), pattern->substr(2), *bits));
    }

    std::optional<frame::Levels> Levels(const char* key) const {
        const Json* value = Find(key);
        if (value == nullptr) {
            return std::nullopt;
        }
        if (value->is_number()) {
            return frame::Levels(value->get<double>());
        }
        if (!IsNumbers(*value, 4)) {
            FailBroken(fmt::format("\"{}\" is {}, not a number or a list of four", key, Described(*value)));
        }
        return frame::Levels((*value)[0], (*value)[1], (*value)[2], (*value)[3]);
    }

    std::optional<frame::Gains> Gains() const {
        const Json* value = Find("white_balance_gains");
        if (value == nullptr) {
            return std::nullopt;
        }
        std::array<double, 3> gains{};
        constexpr std::array kColours = {"R", "G", "B"};
        for (size_t colour = 0; colour < gains.size(); ++colour) {
            const bool isThere = value->is_object() && value->contains(kColours[colour]);
            if (!isThere || !(*value)[kColours[colour]].is_number()) {
                FailBroken(R"("white_balance_gains" lacks a number: expected {"R": 1.9, "G": 1.0, "B": 1.3})");
            }
            gains[colour] = (*value)[kColours[colour]].get<double>();
        }
        return frame::Gains{gains[0], gains[1], gains[2], gains[1]};
    }

    std::optional<std::array<double, 9>> Matrix() const {
        const Json* value = Find("colour_matrix");
        if (value == nullptr) {
            return std::nullopt;
        }
        if (!IsNumbers(*value, 9)) {
            FailBroken("\"colour_matrix\" is not a list of nine numbers");
        }
        return value->get<std::array<double, 9>>();
    }

    std::optional<uint64_t> Orientation() const {
        const std::optional<uint64_t> orientation = Number("orientation");
        if (orientation && (*orientation < 1 || *orientation > 8)) {
            FailBroken(fmt::format("\"orientation\" is {}, not 1 to 8", *orientation));
        }
        return orientation;
    }

    /** A message about the unknown keys, with the known ones that they resemble; empty if there are none. */
    std::string Warning() const {
        constexpr size_t kNamed = 3;
        std::string meant;
        std::vector<std::string> notes;
        for (const auto& [key, value] : m_json.items()) {
            if (std::ranges::find(kKeys, key) != kKeys.end()) {
                continue;
            }
            if (const std::optional<std::string> similar = frame::SimilarName(key, {kKeys.begin(), kKeys.end()})) {
                meant += fmt::format("{}did you mean \"{}\" by {}?", meant.empty() ? "" : " ", *similar, Quoted(key));
            } else {
                notes.push_back(Quoted(key));
            }
        }
        if (notes.empty()) {
            return meant.empty() ? "" : "sidecar: " + meant;
        }
        const size_t rest = notes.size() - std::min(notes.size(), kNamed);
        notes.resize(notes.size() - rest);
        return fmt::format("sidecar: {}{}unknown keys are ignored: {}{}", meant, meant.empty() ? "" : " other ",
                           fmt::join(notes, ", "), rest > 0 ? fmt::format(" and {} more", rest) : "");
    }

private:
    static bool IsNumbers(const Json& value, size_t count) {
        return value.is_array() && value.size() == count &&
               std::ranges::all_of(value, [](const Json& number) { return number.is_number(); });
    }

    Json Parsed(const Bytes& content) const {
        const auto checkDepth = [this](int depth, Json::parse_event_t, const Json&) {
            if (depth > kDeepestLevel) {
                FailBroken(fmt::format("has more than {} levels", kDeepestLevel));
            }
            return true;
        };
        return Json::parse(content, checkDepth, /*allow_exceptions=*/false);
    }

    [[noreturn]] void FailBroken(const std::string& reason) const {
        Fail(ExitCode::Input, "{}: {}: fix this sidecar, or ignore it with --no-sidecar", m_path, reason);
    }

    const Json* Find(const char* key) const {
        const auto found = m_json.find(key);
        return found == m_json.end() ? nullptr : &*found;
    }

    frame::Format Named(const char* key, const std::string& name) const {
        const std::optional<frame::Format> format = frame::FindFormat(name);
        if (!format) {
            FailBroken(fmt::format("\"{}\": there is no format {}", key, Quoted(name)));
        }
        return *format;
    }

    std::string m_path;
    Json m_json;
};

/** A whole number without a fraction. */
Json NumberJson(double number) {
    return std::trunc(number) == number && std::abs(number) < 1e15 ? Json(static_cast<int64_t>(number)) : Json(number);
}

/** One number if all are the same. */
Json LevelsJson(const frame::Levels& levels) {
    const auto& [first, second, third, fourth] = levels.ofFilters;
    if (levels == frame::Levels(first)) {
        return NumberJson(first);
    }
    return Json::array({NumberJson(first), NumberJson(second), NumberJson(third), NumberJson(fourth)});
}

std::string FindSidecar(const std::string& framePath) {
    if (framePath == "-") {
        return "";
    }
    std::error_code error;
    for (const fs::path& path : {fs::path(SidecarPath(framePath)), fs::path(framePath).replace_extension(".json")}) {
        if (path != framePath && fs::is_regular_file(path, error)) {
            return path.string();
        }
    }
    return "";
}

}  // namespace

std::string SidecarPath(const std::string& framePath) {
    return framePath + ".json";
}

Sidecar ReadSidecar(const std::string& framePath) {
    const std::string path = FindSidecar(framePath);
    return path.empty() ? Sidecar() : ParseSidecar(path, ReadInput(path, kSidecarLimit));
}

Sidecar ParseSidecar(const std::string& path, const Bytes& content) {
    const SidecarReader reader(path, content);
    return {.path = path,
            .format = reader.Format(),
            .width = reader.Number("width"),
            .height = reader.Number("height"),
            .stride = reader.Number("stride"),
            .offset = reader.Number("offset"),
            .blackLevel = reader.Levels("black_level"),
            .whiteLevel = reader.Levels("white_level"),
            .gains = reader.Gains(),
            .matrix = reader.Matrix(),
            .orientation = reader.Orientation(),
            .warning = reader.Warning()};
}

Bytes SidecarContent(const Sidecar& sidecar) {
    Json json = Json::object();
    const auto add = [&json](const char* key, const auto& value) {
        if (value) {
            json[key] = *value;
        }
    };
    if (sidecar.format) {
        json["format"] = frame::Name(*sidecar.format);
    }
    add("width", sidecar.width);
    add("height", sidecar.height);
    add("stride", sidecar.stride);
    add("offset", sidecar.offset);
    if (sidecar.blackLevel) {
        json["black_level"] = LevelsJson(*sidecar.blackLevel);
    }
    if (sidecar.whiteLevel) {
        json["white_level"] = LevelsJson(*sidecar.whiteLevel);
    }
    if (sidecar.gains) {
        json["white_balance_gains"] = {
            {"R", sidecar.gains->red}, {"G", sidecar.gains->green}, {"B", sidecar.gains->blue}};
    }
    add("colour_matrix", sidecar.matrix);
    add("orientation", sidecar.orientation);
    const std::string text = json.dump(2) + "\n";
    return Bytes(text.begin(), text.end());
}

void WriteSidecar(const std::string& framePath, const Sidecar& sidecar) {
    if (framePath != "-") {
        WriteOutput(SidecarPath(framePath), SidecarContent(sidecar));
    }
}

}  // namespace kvx::tool
