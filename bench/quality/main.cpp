// Prints how well an algorithm restores pictures: kvx_quality --algorithm ipp FOLDER...
#include <fmt/core.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <opencv2/imgcodecs.hpp>
#include <string>
#include <vector>

#include "KvxDemosaicing/KvxBayer.h"
#include "quality/Cpsnr.h"

namespace {

using kvx::quality::Cpsnr;

const std::map<std::string, int> kAlgorithms = {{"bilinear", KvxBayerAlgorithm_Bilinear},
                                                {"ipp", KvxBayerAlgorithm_IPP},
                                                {"edge-aware", KvxBayerAlgorithm_EdgeAware}};

struct Entry {
    std::string name;
    Cpsnr value;
};

struct Folder {
    std::string path;
    std::vector<Entry> pictures;

    Cpsnr Mean() const {
        Cpsnr mean{};
        for (const auto& [name, value] : pictures) {
            mean.colour += value.colour;
            mean.red += value.red;
            mean.green += value.green;
            mean.blue += value.blue;
        }
        const auto count = static_cast<double>(pictures.size());
        return {mean.colour / count, mean.red / count, mean.green / count, mean.blue / count};
    }
};

/** Every picture of a folder that can be read, by name. */
Folder MeasureFolder(const std::string& path, int algorithm, int border) {
    std::vector<std::filesystem::path> files;
    for (const auto& file : std::filesystem::directory_iterator(path)) files.push_back(file.path());
    std::sort(files.begin(), files.end());
    Folder folder{path, {}};
    for (const auto& file : files) {
        const cv::Mat picture = cv::imread(file.string(), cv::IMREAD_COLOR);
        if (picture.empty() || std::min(picture.rows, picture.cols) <= 2 * border) continue;
        folder.pictures.push_back({file.filename().string(), kvx::quality::Measure(picture, algorithm, border)});
    }
    if (folder.pictures.empty()) throw std::runtime_error(path + ": no picture in it");
    return folder;
}

void PrintRow(const std::string& name, const Cpsnr& value) {
    fmt::print("{:<40} {:7.3f} {:7.3f} {:7.3f} {:7.3f}\n", name, value.colour, value.red, value.green, value.blue);
}

void PrintTable(const std::vector<Folder>& folders, bool eachPicture) {
    fmt::print("{:<40} {:>7} {:>7} {:>7} {:>7}\n", "CPSNR, dB", "colour", "red", "green", "blue");
    for (const Folder& folder : folders) {
        if (eachPicture)
            for (const auto& [name, value] : folder.pictures) PrintRow("  " + name, value);
        PrintRow(folder.path, folder.Mean());
    }
}

nlohmann::ordered_json ToJson(const Cpsnr& value) {
    return {{"colour", value.colour}, {"red", value.red}, {"green", value.green}, {"blue", value.blue}};
}

nlohmann::ordered_json ToJson(const std::vector<Folder>& folders, const std::string& algorithm, int border) {
    nlohmann::ordered_json json{{"algorithm", algorithm}, {"border", border}, {"folders", nlohmann::json::array()}};
    for (const Folder& folder : folders) {
        nlohmann::ordered_json pictures;
        for (const auto& [name, value] : folder.pictures) pictures[name] = ToJson(value);
        json["folders"].push_back({{"path", folder.path}, {"mean", ToJson(folder.Mean())}, {"pictures", pictures}});
    }
    return json;
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("Mosaics 8-bit pictures, converts the mosaics, and prints how near the result comes.");
    std::string algorithm = "ipp", jsonFile;
    std::vector<std::string> paths;
    int border = 10;
    bool eachPicture = false;
    app.add_option("folders", paths, "Folders of pictures")->required()->check(CLI::ExistingDirectory);
    app.add_option("-a,--algorithm", algorithm, "Algorithm")->check(CLI::IsMember(kAlgorithms))->capture_default_str();
    app.add_option("--border", border, "Pixels at each side that do not count")
        ->check(CLI::Range(0, 1000))
        ->capture_default_str();
    app.add_option("--json", jsonFile, "Writes all figures to this file");
    app.add_flag("--each", eachPicture, "Prints every picture's figures, not only the folders'");
    CLI11_PARSE(app, argc, argv);
    try {
        std::vector<Folder> folders;
        for (const std::string& path : paths) folders.push_back(MeasureFolder(path, kAlgorithms.at(algorithm), border));
        PrintTable(folders, eachPicture);
        if (!jsonFile.empty()) std::ofstream(jsonFile) << ToJson(folders, algorithm, border).dump(2) << '\n';
    } catch (const std::exception& error) {
        fmt::print(stderr, "kvx_quality: {}\n", error.what());
        return 1;
    }
    return 0;
}
