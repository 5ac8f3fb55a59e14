#include "frame/camera/ProfileJson.h"

#include "frame/camera/JsonReader.h"
#include "frame/camera/ProfileLimits.h"
#include "frame/formats/NearestNames.h"

namespace kvx::frame {
namespace {

constexpr const char* kVersionKey = "kvx_camera_profile";
/** Far more than profiles nest: destroying values takes stack for each level. */
constexpr int kDeepestLevel = 16;

/** Names of the filters from FirstFilter(). */
std::vector<const char*> FilterNames(Family family) {
    if (family == Family::Bayer) return {"R", "Gr", "Gb", "B"};
    if (family == Family::TrueSense) return {"R", "G", "B", "W"};
    return {"Y"};
}

std::optional<Levels> LevelsOf(JsonReader& reader, const char* key) {
    const Json* const value = reader.Find(key);
    if (!value) return std::nullopt;
    if (value->is_number()) return Levels(value->get<double>());
    const std::vector<double> numbers = reader.Numbers(key, 4);
    return Levels(numbers[0], numbers[1], numbers[2], numbers[3]);
}

std::optional<Gains> GainsOf(JsonReader& profile, const std::string& name) {
    const Json* const value = profile.Find("white_balance_gains");
    if (!value) return std::nullopt;
    JsonReader reader(name + ": white_balance_gains", *value);
    const auto red = reader.Number("R"), green = reader.Number("G"), blue = reader.Number("B");
    if (!red || !green || !blue) reader.FailBroken(R"(expected {"R": 1.9, "G": 1.0, "B": 1.3})");
    const Gains gains = {*red, *green, *blue, reader.Number("W").value_or(*green)};
    reader.RequireAllKnown();
    return gains;
}

NoiseLine LineOf(const std::string& name, const Json& value) {
    JsonReader reader(name, value);
    const NoiseLine line = {reader.Number("slope").value_or(0), reader.Number("intercept").value_or(0)};
    reader.RequireAllKnown();
    return line;
}

std::optional<SensorNoise> NoiseOf(JsonReader& profile, const std::string& name) {
    const Json* const value = profile.Find("noise");
    if (!value) return std::nullopt;
    JsonReader reader(name + ": noise", *value);
    const Json *const pan = reader.Find("pan"), *const colour = reader.Find("colour");
    if (!pan && !colour) {
        const NoiseLine line = LineOf(name + ": noise", *value);
        return SensorNoise{line, line};
    }
    if (!pan || !colour) reader.FailBroken("expected both \"pan\" and \"colour\"");
    reader.RequireAllKnown();
    return SensorNoise{LineOf(name + ": noise: pan", *pan), LineOf(name + ": noise: colour", *colour)};
}

std::vector<Site> SitesOf(JsonReader& reader, const char* key) {
    const Json* const value = reader.Find(key);
    std::vector<Site> sites;
    if (!value) return sites;
    const auto isCoordinate = [](const Json& v) { return v.is_number_unsigned() && v.get<uint64_t>() <= INT32_MAX; };
    if (!value->is_array()) reader.FailKey(key, "a list");
    for (const Json& site : *value) {
        if (!site.is_array() || site.size() != 2 || !isCoordinate(site[0]) || !isCoordinate(site[1]))
            reader.FailKey(key, "a list of [column, row]");
        sites.push_back({site[0].get<uint32_t>(), site[1].get<uint32_t>()});
    }
    return sites;
}

Shading ShadingOf(JsonReader& profile, const std::string& name, const std::optional<Format>& format) {
    const Json* const value = profile.Find("shading");
    Shading shading;
    if (!value) return shading;
    JsonReader reader(name + ": shading", *value);
    shading.columns = reader.Whole("columns");
    shading.rows = reader.Whole("rows");
    const Json* const gains = reader.Find("gains");
    reader.RequireAllKnown();
    if (!gains || !format)
        reader.FailBroken("expected \"columns\", \"rows\" and \"gains\", and a format of the profile");
    JsonReader lists(name + ": shading: gains", *gains);
    size_t colour = FirstFilter(format->family);
    for (const char* filter : FilterNames(format->family)) {
        const std::vector<double> numbers = lists.Numbers(filter, size_t{shading.columns} * shading.rows);
        shading.gains[colour++].assign(numbers.begin(), numbers.end());
    }
    lists.RequireAllKnown();
    return shading;
}

Json LevelsJson(const Levels& given) {
    const auto& levels = given.ofFilters;
    const bool isOne = std::all_of(levels.begin(), levels.end(), [&](double level) { return level == levels[0]; });
    return isOne ? Json(levels[0]) : Json(levels);
}

Json LineJson(const NoiseLine& line) {
    return {{"slope", line.slope}, {"intercept", line.intercept}};
}

Json NoiseJson(const SensorNoise& noise) {
    const bool isOne = noise.pan.slope == noise.colour.slope && noise.pan.intercept == noise.colour.intercept;
    return isOne ? LineJson(noise.pan) : Json{{"pan", LineJson(noise.pan)}, {"colour", LineJson(noise.colour)}};
}

Json SitesJson(const std::vector<Site>& sites) {
    Json list = Json::array();
    for (const Site& site : sites) list.push_back({site.column, site.row});
    return list;
}

Json ShadingJson(const Shading& shading, Family family) {
    Json gains = Json::object();
    size_t colour = FirstFilter(family);
    for (const char* filter : FilterNames(family)) {
        Json& list = gains[filter] = Json::array();
        for (const float gain : shading.gains[colour])
            list.push_back(Json::parse(fmt::format("{}", gain)));  // the shortest text
        ++colour;
    }
    return {{"columns", shading.columns}, {"rows", shading.rows}, {"gains", gains}};
}

}  // namespace

CameraProfile ProfileFromJson(std::string_view json, const std::string& name, std::string& darkFrame) {
    const auto checkDepth = [&name](int depth, Json::parse_event_t, const Json&) {
        if (depth > kDeepestLevel) Fail(KvxResult_InvalidArgument, "{}: has more than {} levels", name, kDeepestLevel);
        return true;
    };
    const Json object = Json::parse(json, checkDepth, /*allow_exceptions=*/false);
    JsonReader reader(name, object);
    if (reader.Whole(kVersionKey) != 1)
        reader.FailBroken(fmt::format("is no camera profile: expected \"{}\": 1", kVersionKey));
    CameraProfile profile;
    profile.camera = reader.Text("camera");
    if (const std::string format = reader.Text("format"); !format.empty()) {
        profile.format = FindFormat(format);
        if (!profile.format) reader.FailKey("format", "the name of a format");
    }
    profile.width = reader.Whole("width");
    profile.height = reader.Whole("height");
    profile.blackLevel = LevelsOf(reader, "black_level");
    profile.whiteLevel = LevelsOf(reader, "white_level");
    profile.gains = GainsOf(reader, name);
    if (const std::vector<double> numbers = reader.Numbers("colour_matrix", 9); !numbers.empty())
        std::copy(numbers.begin(), numbers.end(), profile.matrix.emplace().begin());
    profile.noise = NoiseOf(reader, name);
    profile.hotPixels = SitesOf(reader, "hot_pixels");
    profile.deadPixels = SitesOf(reader, "dead_pixels");
    profile.shading = ShadingOf(reader, name, profile.format);
    darkFrame = reader.Text("dark_frame");

    constexpr size_t kMostKeys = 1000;
    Json others = Json::object();
    const auto unknown = reader.UnknownKeys();
    if (unknown.size() > kMostKeys) reader.FailBroken(fmt::format("has more than {} unknown keys", kMostKeys));
    for (const std::string& key : unknown) {
        others[key] = object[key];
        profile.warnings.push_back(fmt::format("{}: \"{}\" is unknown: did you mean \"{}\"?", name, key,
                                               NearestNames(key, reader.KnownKeys(), 1).front()));
    }
    if (!others.empty()) profile.otherKeys = others.dump();
    return profile;
}

std::string ProfileToJson(const CameraProfile& profile, const std::string& darkFrame) {
    Json json = {{kVersionKey, 1}};
    if (!profile.camera.empty()) json["camera"] = profile.camera;
    if (profile.format) json["format"] = Name(*profile.format);
    if (profile.width > 0) json["width"] = profile.width;
    if (profile.height > 0) json["height"] = profile.height;
    if (profile.blackLevel) json["black_level"] = LevelsJson(*profile.blackLevel);
    if (profile.whiteLevel) json["white_level"] = LevelsJson(*profile.whiteLevel);
    if (profile.gains) {
        json["white_balance_gains"] = {
            {"R", profile.gains->red}, {"G", profile.gains->green}, {"B", profile.gains->blue}};
        if (profile.gains->pan != profile.gains->green) json["white_balance_gains"]["W"] = profile.gains->pan;
    }
    if (profile.matrix) json["colour_matrix"] = *profile.matrix;
    if (profile.noise) json["noise"] = NoiseJson(*profile.noise);
    if (!profile.hotPixels.empty()) json["hot_pixels"] = SitesJson(profile.hotPixels);
    if (!profile.deadPixels.empty()) json["dead_pixels"] = SitesJson(profile.deadPixels);
    if (profile.shading.columns != 0) json["shading"] = ShadingJson(profile.shading, profile.format->family);
    if (!darkFrame.empty()) json["dark_frame"] = darkFrame;
    if (!profile.otherKeys.empty()) {
        const Json others = Json::parse(profile.otherKeys, nullptr, /*allow_exceptions=*/false);
        if (!others.is_object()) Fail(KvxResult_InvalidArgument, "the other keys of the profile are no JSON object");
        for (const auto& [key, value] : others.items())
            if (!json.contains(key)) json[key] = value;
    }
    return json.dump(1, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace kvx::frame
