// Measures how well an algorithm restores images: kvx_quality --algorithm ipp FOLDER...
#include <fmt/core.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <opencv2/imgcodecs.hpp>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "quality/Cpsnr.h"
#include "quality/Restoration.h"
#include "quality/Sheet.h"

namespace {

using kvx::quality::Cpsnr;
using kvx::quality::Setting;

const std::map<std::string, kvx::quality::Sharpness> kSharpness = {{"off", kvx::quality::Sharpness::Off},
                                                                   {"plain", kvx::quality::Sharpness::Plain},
                                                                   {"full", kvx::quality::Sharpness::Full}};

/** In the order of the columns. */
constexpr std::pair<const char*, double Cpsnr::*> kFigures[] = {
    {"colour", &Cpsnr::colour}, {"red", &Cpsnr::red},       {"green", &Cpsnr::green}, {"blue", &Cpsnr::blue},
    {"luma", &Cpsnr::luma},     {"chroma", &Cpsnr::chroma}, {"ssim", &Cpsnr::ssim},
};

struct Entry {
    std::string name;
    Cpsnr value;
};

struct Folder {
    std::string path;
    std::vector<Entry> pictures;

    Cpsnr Mean() const {
        Cpsnr mean{};
        for (const auto& [name, figure] : kFigures)
            for (const Entry& picture : pictures)
                mean.*figure += picture.value.*figure / static_cast<double>(pictures.size());
        return mean;
    }
};

/** Every picture of a folder that can be read, by name. The restored ones go to `output` unless that is empty. */
Folder MeasureFolder(const std::string& path, const Setting& setting, int border, const std::string& output) {
    std::vector<std::filesystem::path> files;
    for (const auto& file : std::filesystem::directory_iterator(path)) files.push_back(file.path());
    std::sort(files.begin(), files.end());
    Folder folder{path, {}};
    for (const auto& file : files) {
        const cv::Mat picture = cv::imread(file.string(), cv::IMREAD_COLOR);
        if (picture.empty() || std::min(picture.rows, picture.cols) <= 2 * border) continue;
        const cv::Mat restored = kvx::quality::Restored({picture, 255}, setting);
        if (!output.empty()) kvx::quality::WritePng(output + "/" + file.stem().string() + ".png", restored);
        folder.pictures.push_back({file.filename().string(), kvx::quality::Compare(picture, restored, border)});
    }
    if (folder.pictures.empty()) throw std::runtime_error(path + ": no images in this folder");
    return folder;
}

void PrintRow(const std::string& name, const Cpsnr& value) {
    fmt::print("{:<40}", name);
    for (const auto& [title, figure] : kFigures) fmt::print(" {:7.3f}", value.*figure);
    fmt::print("\n");
}

void PrintTable(const std::vector<Folder>& folders, bool eachPicture) {
    fmt::print("{:<40}", "PSNR, dB");
    for (const auto& [title, figure] : kFigures) fmt::print(" {:>7}", title);
    fmt::print("\n");
    for (const Folder& folder : folders) {
        if (eachPicture)
            for (const auto& [name, value] : folder.pictures) PrintRow("  " + name, value);
        PrintRow(folder.path, folder.Mean());
    }
}

nlohmann::ordered_json ToJson(const Cpsnr& value) {
    nlohmann::ordered_json json;
    for (const auto& [title, figure] : kFigures) json[title] = value.*figure;
    return json;
}

nlohmann::ordered_json ToJson(const std::vector<Folder>& folders) {
    auto json = nlohmann::ordered_json::array();
    for (const Folder& folder : folders) {
        nlohmann::ordered_json pictures;
        for (const auto& [name, value] : folder.pictures) pictures[name] = ToJson(value);
        json.push_back({{"path", folder.path}, {"mean", ToJson(folder.Mean())}, {"pictures", pictures}});
    }
    return json;
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("Makes mosaics from 8-bit images, converts them, and measures the PSNR of the results.");
    std::string algorithm = "ipp", jsonFile, output;
    std::vector<std::string> paths, names, assignments;
    int border = 10;
    bool eachPicture = false, filtersNoise = true;
    std::string sharpness = "plain";
    Setting setting{.algorithm = {}, .params = kvx::quality::PlainParams()};
    for (const auto& known : kvx::quality::AllAlgorithms()) names.emplace_back(known.name);
    app.add_option("folders", paths, "Folders of images")->required()->check(CLI::ExistingDirectory);
    app.add_option("-a,--algorithm", algorithm, "Algorithm")->check(CLI::IsMember(names))->capture_default_str();
    app.add_option("--analog-gain", setting.analogGain, "Adds the noise of this analog gain to the mosaics")
        ->check(CLI::NonNegativeNumber);
    app.add_option("--seed", setting.seed, "Seed of the noise")->capture_default_str();
    app.add_option("--noise-filter", filtersNoise, "on or off: all passes of the TrueSense noise filter")
        ->default_str("on");
    app.add_option("--sharpness", sharpness,
                   "Detail in the TrueSense pipeline: off, plain or full (default sharpening)")
        ->check(CLI::IsMember(kSharpness))
        ->capture_default_str();
    app.add_flag("--rendered", setting.isRendered,
                 "Makes frames of linear light from sRGB images and converts them with the sRGB curve (TrueSense)");
    app.add_option("--set", assignments, "TrueSense parameter, NAME=VALUE")->allow_extra_args(false);
    app.add_option("--border", border, "Excluded pixels at each side")
        ->check(CLI::Range(0, 1000))
        ->capture_default_str();
    app.add_option("--pictures", output, "Writes the restored images to this folder")->check(CLI::ExistingDirectory);
    app.add_option("--json", jsonFile, "Writes all figures to this file");
    app.add_flag("--each", eachPicture, "Prints figures per image, not only per folder");
    const auto list = [&names] {
        for (const std::string& name : names) fmt::print("{}\n", name);
        throw CLI::Success();
    };
    app.add_flag_callback("--list", list, "Prints the names of all algorithms")->trigger_on_parse();
    CLI11_PARSE(app, argc, argv);
    try {
        setting.algorithm = kvx::quality::AlgorithmByName(algorithm);
        kvx::quality::SetSharpness(setting.params, kSharpness.at(sharpness));
        if (!filtersNoise) kvx::quality::SwitchFilterOff(setting.params);
        for (const std::string& assignment : assignments) kvx::quality::SetParam(setting.params, assignment);
        std::vector<Folder> folders;
        for (const std::string& path : paths) folders.push_back(MeasureFolder(path, setting, border, output));
        PrintTable(folders, eachPicture);
        if (!jsonFile.empty()) {
            nlohmann::ordered_json json{{"algorithm", algorithm},         {"border", border},
                                        {"analogGain", nullptr},          {"noiseFilter", filtersNoise},
                                        {"sharpness", sharpness},         {"seed", setting.seed},
                                        {"rendered", setting.isRendered}, {"set", assignments}};
            if (setting.analogGain) json["analogGain"] = *setting.analogGain;
            json["folders"] = ToJson(folders);
            std::ofstream(jsonFile) << json.dump(2) << '\n';
        }
    } catch (const std::exception& error) {
        fmt::print(stderr, "kvx_quality: {}\n", error.what());
        return 1;
    }
    return 0;
}
