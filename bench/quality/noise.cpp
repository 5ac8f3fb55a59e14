// Measures remaining noise and edge widths of the TrueSense algorithms: kvx_noise [IMAGE]
#include <fmt/ranges.h>

#include <CLI/CLI.hpp>
#include <fstream>
#include <opencv2/imgcodecs.hpp>
#include <string>
#include <vector>

#include "quality/FlatField.h"
#include "quality/NoiseFigures.h"
#include "quality/NoisePictures.h"

namespace {

using namespace kvx::quality;

struct Options {
    std::vector<std::string> algorithms = {"fast", "simple", "bayer-like", "kodak-like", "kodak"};
    std::vector<double> gains = {11.04, 23.96, 36.77};
    std::vector<std::string> assignments;
    std::string picture, folder, jsonFile;
    std::vector<int> corner;
    uint64_t seed = 1;
};

/** One for each algorithm that the library has. */
std::vector<Setting> SettingsOf(const Options& options) {
    std::vector<Setting> settings;
    for (const std::string& name : options.algorithms) {
        Setting setting{.algorithm = AlgorithmByName(name), .seed = options.seed, .params = PlainParams()};
        for (const std::string& assignment : options.assignments) SetParam(setting.params, assignment);
        try {
            Restored(DrawFlat(AllFlatFields().front(), 64), setting);
            settings.push_back(setting);
        } catch (const std::runtime_error& error) {
            fmt::print(stderr, "kvx_noise: skipped: {}\n", error.what());
        }
    }
    if (settings.empty()) throw std::runtime_error("no algorithm to measure");
    return settings;
}

std::string CellOf(const nlohmann::ordered_json& value) {
    if (value.is_null()) return "-";
    return value.is_string() ? value.get<std::string>() : fmt::format("{:.2f}", value.get<double>());
}

void PrintTable(const std::string& title, const Table& rows) {
    fmt::print("{}\n", title);
    for (const auto& column : rows.front().items()) fmt::print("{:<12} ", column.key());
    for (const auto& row : rows) {
        fmt::print("\n");
        for (const auto& value : row) fmt::print("{:<12} ", CellOf(value));
    }
    fmt::print("\n\n");
}

void DrawPicture(const Options& options, const std::vector<Setting>& settings, const std::vector<Gain>& gains) {
    const cv::Mat pixels = cv::imread(options.picture, cv::IMREAD_COLOR);
    cv::Rect part((pixels.cols - kPartSize) / 2, (pixels.rows - kPartSize) / 2, kPartSize, kPartSize);
    if (!options.corner.empty()) part = {options.corner[0], options.corner[1], kPartSize, kPartSize};
    if ((part & cv::Rect({}, pixels.size())) != part)
        throw std::runtime_error(options.picture + ": not an image, or it does not contain the crop");
    DrawParts(options.folder + "/picture.png", {pixels, 255}, part, settings, gains);
}

void Run(const Options& options) {
    const std::vector<Setting> settings = SettingsOf(options);
    std::vector<Gain> gains = {std::nullopt};
    gains.insert(gains.end(), options.gains.begin(), options.gains.end());
    if (!options.folder.empty()) {
        DrawFlatsAndEdges(options.folder, settings, gains);
        if (!options.picture.empty()) DrawPicture(options, settings, gains);
    }
    const Table flats = FlatTable(settings, gains), edges = EdgeTable(settings, gains), summary = SummaryOf(flats);
    PrintTable("Flat fields, 12-bit codes", flats);
    PrintTable("Worst flat field", summary);
    PrintTable("Edges, pixels and shares of the step", edges);
    if (!options.jsonFile.empty()) {
        const nlohmann::ordered_json json{
            {"seed", options.seed}, {"set", options.assignments}, {"flats", flats}, {"edges", edges}};
        std::ofstream(options.jsonFile) << json.dump(2) << '\n';
    }
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("Measures remaining noise and edge widths of the TrueSense algorithms.");
    Options options;
    app.add_option("picture", options.picture, "An image for --pictures")->check(CLI::ExistingFile);
    app.add_option("-a,--algorithm", options.algorithms, "Algorithms")->capture_default_str();
    app.add_option("--analog-gain", options.gains, "Analog gains of the added noise")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str();
    app.add_option("--seed", options.seed, "Seed of the noise")->capture_default_str();
    app.add_option("--set", options.assignments, "Parameter, NAME=VALUE")->allow_extra_args(false);
    app.add_option("--pictures", options.folder, "Folder for enlarged crops of flat fields, edges and the image")
        ->check(CLI::ExistingDirectory);
    app.add_option("--corner", options.corner, "Left column and top row of the crop (default: the middle)")
        ->expected(2);
    app.add_option("--json", options.jsonFile, "Writes all figures to this file");
    CLI11_PARSE(app, argc, argv);
    try {
        Run(options);
    } catch (const std::exception& error) {
        fmt::print(stderr, "kvx_noise: {}\n", error.what());
        return 1;
    }
    return 0;
}
