#include "tools/commands/Commands.h"

#include <fmt/format.h>

#include <cmath>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>

#include "KvxFrame/Geometry.h"
#include "tools/console/Arguments.h"
#include "tools/console/Console.h"
#include "tools/console/TextTable.h"
#include "tools/convert/FinishPlan.h"
#include "tools/files/InputFile.h"
#include "tools/files/OutputFile.h"
#include "tools/files/PictureDecoder.h"
#include "tools/files/PictureEncoder.h"
#include "tools/frames/FrameError.h"
#include "tools/frames/FrameOptions.h"
#include "tools/frames/FrameReader.h"
#include "tools/look/CompareSheet.h"
#include "tools/look/CropSelection.h"

namespace kvx::tool {
namespace {

constexpr const char* kFooter =
    R"(Converts the frame to 8 bits with every algorithm of its family, prints the times (the
median of several conversions, without reading and writing files), and writes a sheet with
the whole pictures and enlarged crops: the given ones, or the three places where the
algorithms differ most. A reference adds the PSNR over the whole picture (peak 255) and
maps of the difference; it must have the same tone and colours as the converted picture.

Examples:
  kvx-demosaic compare scene_768x512_BayerRG12.raw --reference scene.png
  kvx-demosaic compare frame.pgm --look natural --crop 600,400,120,80)";

const cv::Size kCropSize(120, 80);
constexpr size_t kCropCount = 3;

struct CompareOptions {
    std::string input;
    std::string reference;
    std::string output = "compare.png";
    FrameRequest request;
    FinishRequest finish;
    std::vector<std::string> crops;
    bool asJson = false;
};

/** The crops that the user gives; they must lie inside the frame. */
std::vector<cv::Rect> GivenCrops(const std::vector<std::string>& texts, const frame::SourceView& frame,
                                 const std::string& name) {
    std::vector<cv::Rect> crops;
    for (const std::string& text : texts) {
        const _KvxRect crop = ParseRegion("--crop", text);
        WithExitCode(ExitCode::Frame, name + ": --crop", [&] { return frame::Crop(frame, crop); });
        crops.emplace_back(static_cast<int>(crop.x), static_cast<int>(crop.y), static_cast<int>(crop.width),
                           static_cast<int>(crop.height));
    }
    return crops;
}

std::vector<cv::Rect> BusiestCrops(const std::vector<AlgorithmResult>& results) {
    std::vector<cv::Mat> pictures;
    pictures.reserve(results.size());
    for (const AlgorithmResult& result : results) {
        pictures.push_back(result.picture);
    }
    return SelectCrops(pictures, kCropSize, kCropCount);
}

cv::Mat ReadReference(const std::string& path, cv::Size size) {
    if (path.empty()) {
        return {};
    }
    const Picture picture = DecodePicture(ReadInput(path), InputName(path));
    if (picture.pixels.size() != size || picture.pixels.channels() != 3) {
        Fail(ExitCode::Frame, "{}: the reference must be a colour picture of the frame's {}x{} pixels", InputName(path),
             size.width, size.height);
    }
    cv::Mat bytes;
    picture.pixels.convertTo(bytes, CV_8U, 255.0 / picture.maximum);
    return bytes;
}

std::string ResultTable(const std::vector<AlgorithmResult>& results) {
    TextTable table({"algorithm", "ms", "Mpixel/s", "PSNR/dB"});
    for (const AlgorithmResult& result : results) {
        table.AddRow({result.name, fmt::format("{:.2f}", 1e3 * result.seconds),
                      fmt::format("{:.0f}", 1e-6 * static_cast<double>(result.picture.total()) / result.seconds),
                      result.psnr ? fmt::format("{:.2f}", *result.psnr) : "-"});
    }
    return table.Text();
}

std::string ResultJson(const std::vector<AlgorithmResult>& results, const std::vector<cv::Rect>& crops) {
    auto rows = nlohmann::ordered_json::array();
    for (const AlgorithmResult& result : results) {
        rows.push_back({{"algorithm", result.name}, {"seconds", result.seconds}});
        if (result.psnr) {
            // JSON has no infinity: null means equal to the reference.
            rows.back()["psnr"] = std::isfinite(*result.psnr) ? nlohmann::json(*result.psnr) : nlohmann::json();
        }
    }
    auto places = nlohmann::ordered_json::array();
    for (const cv::Rect& crop : crops) {
        places.push_back({{"x", crop.x}, {"y", crop.y}, {"width", crop.width}, {"height", crop.height}});
    }
    return JsonText({{"algorithms", rows}, {"crops", places}});
}

void Compare(const CompareOptions& options) {
    const PictureKind kind = PictureKindFor(options.output);
    RequireDistinct(options.input, options.output);
    RequireDistinct(options.reference, options.output);
    const std::string name = InputName(options.input);
    const FrameInput input = ReadFrame(options.input, options.request);
    std::vector<cv::Rect> crops = GivenCrops(options.crops, ViewOf(input.frame), name);
    const cv::Mat reference = ReadReference(options.reference, input.frame.samples.size());
    const auto finish = PlanFinish(options.finish, input, name).finish;
    const auto results = WithExitCode(ExitCode::Library, name, [&] {
        return CompareAlgorithms(ViewOf(input.frame), finish, options.finish.camera, options.finish.defects, reference);
    });
    if (crops.empty()) {
        crops = BusiestCrops(results);
    }
    const std::string title =
        fmt::format("{}  {}x{}  {}", std::filesystem::path(name).filename().string(), input.frame.samples.cols,
                    input.frame.samples.rows, frame::Name(input.fileFormat));
    const cv::Mat sheet = DrawComparison(title, results, reference, crops);
    WritePicture(options.output, {sheet, 255}, kind);
    PrintText(options.asJson ? ResultJson(results, crops) : ResultTable(results));
}

}  // namespace

void AddCompareCommand(CLI::App& tool) {
    const auto options = std::make_shared<CompareOptions>();
    CLI::App* command = tool.add_subcommand("compare", "Compare the algorithms on a frame");
    AddFrameArgument(*command, options->input);
    command->add_option("--reference", options->reference, "The true picture, in the size of the frame")
        ->type_name("FILE");
    command->add_option("-o,--output", options->output, "File for the sheet; default: compare.png")->type_name("FILE");
    AddFrameOptions(*command, options->request);
    AddFinishOptions(*command, options->finish);
    command->add_option("--crop", options->crops, "Part to enlarge; repeatable")
        ->type_name("X,Y,W,H")
        ->allow_extra_args(false);
    AddJsonFlag(*command, options->asJson);
    command->footer(kFooter);
    command->callback([options] { Compare(*options); });
}

}  // namespace kvx::tool
