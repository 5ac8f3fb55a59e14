#include "tools/commands/Commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>

#include "frame/base/Team.h"
#include "tools/console/Arguments.h"
#include "tools/console/Console.h"
#include "tools/console/TextTable.h"
#include "tools/files/RawLayout.h"
#include "tools/frames/Formats.h"
#include "tools/frames/FrameError.h"
#include "tools/look/Benchmark.h"
#include "tools/look/CameraLinks.h"

namespace kvx::tool {
namespace {

constexpr const char* kFooter =
    R"(Converts the demo scene to 8-bit pictures in memory, repeatedly, and prints the median.
Finished pictures, which come first, have white balance, colour matrix and sRGB curve.
GB/s counts the bytes of the frames as the camera sends them; 'keeps up with' names the
links whose full data rate this machine can convert (decimal units).

Examples:
  kvx-demosaic bench
  kvx-demosaic bench --format BayerRG10p --size 4096x3000 --algorithm ipp --threads 1)";

constexpr uint64_t kMaximumMilliseconds = 60'000;

struct BenchOptions {
    std::vector<std::string> formats = {"BayerRG8", "BayerRG12p", "SCF1WBWG12"};
    std::vector<std::string> sizes = {"1920x1200"};
    std::vector<std::string> algorithms;
    std::optional<uint64_t> threads;
    std::optional<uint64_t> milliseconds;
    bool asJson = false;
};

cv::Size ParseSize(const std::string& text) {
    const size_t sign = text.find('x');
    if (sign == std::string::npos) {
        Fail(ExitCode::Usage, "--size: '{}' is not of the form WIDTHxHEIGHT", text);
    }
    const uint64_t width = ParseNumber("--size", text.substr(0, sign));
    const uint64_t height = ParseNumber("--size", text.substr(sign + 1));
    CheckFrameSize(width, height, "--size " + text);
    return {static_cast<int>(width), static_cast<int>(height)};
}

bool HasAlgorithm(const std::vector<frame::Format>& formats, const std::string& name) {
    return std::any_of(formats.begin(), formats.end(), [&name](const frame::Format& format) {
        const auto& algorithms = frame::AlgorithmsOf(format.family);
        return std::any_of(algorithms.begin(), algorithms.end(),
                           [&name](const frame::Algorithm& algorithm) { return name == algorithm.name; });
    });
}

BenchmarkPlan MakePlan(const BenchOptions& options) {
    BenchmarkPlan plan;
    for (const std::string& name : options.formats) {
        plan.formats.push_back(RequireFormat(name));
        if (!frame::IsSource(plan.formats.back())) {
            Fail(ExitCode::Usage, "--format {}: frames of this format cannot be converted", name);
        }
    }
    for (const std::string& text : options.sizes) {
        plan.sizes.push_back(ParseSize(text));
    }
    for (const std::string& name : options.algorithms) {
        if (!HasAlgorithm(plan.formats, name)) {
            Fail(ExitCode::Usage, "--algorithm {}: unknown for these formats", name);
        }
    }
    plan.algorithms = options.algorithms;
    plan.threads = static_cast<int>(options.threads.value_or(0));
    plan.budget = 1e-3 * static_cast<double>(options.milliseconds.value_or(200));
    return plan;
}

std::string LinksKeptUpWith(double bytesPerSecond) {
    std::string names;
    for (const CameraLink& link : kCameraLinks) {
        if (link.bytesPerSecond <= bytesPerSecond) {
            names += (names.empty() ? "" : "; ") + std::string(link.name);
        }
    }
    return names.empty() ? "-" : names.find(kCameraLinks.back().name) != std::string::npos ? "all" : names;
}

std::string SizeText(const Throughput& result) {
    return fmt::format("{}x{}", result.width, result.height);
}

std::string ThroughputTable(const std::vector<Throughput>& results) {
    TextTable table({"format", "size", "algorithm", "picture", "ms", "frames/s", "Mpixel/s", "GB/s", "keeps up with"});
    for (const Throughput& result : results) {
        table.AddRow({frame::Name(result.format), SizeText(result), result.algorithm.empty() ? "-" : result.algorithm,
                      result.isFinished ? "finished" : "bare", fmt::format("{:.2f}", 1e3 * result.seconds),
                      fmt::format("{:.1f}", result.FramesPerSecond()),
                      fmt::format("{:.0f}", 1e-6 * result.PixelsPerSecond()),
                      fmt::format("{:.3f}", 1e-9 * result.BytesPerSecond()), LinksKeptUpWith(result.BytesPerSecond())});
    }
    return table.Text();
}

/** Frames per second that each link delivers, a column for each format and size. */
std::string LinkTable(const std::vector<Throughput>& results) {
    std::vector<std::string> heading = {"link", "GB/s"};
    std::vector<double> frameBytes;
    for (const Throughput& result : results) {
        std::string column = fmt::format("{} {}", frame::Name(result.format), SizeText(result));
        if (std::find(heading.begin(), heading.end(), column) == heading.end()) {
            heading.push_back(std::move(column));
            frameBytes.push_back(static_cast<double>(result.frameBytes));
        }
    }
    heading.emplace_back("assumption");
    TextTable table(heading);
    for (const CameraLink& link : kCameraLinks) {
        std::vector<std::string> row = {link.name, fmt::format("{:.3f}", 1e-9 * link.bytesPerSecond)};
        for (const double bytes : frameBytes) {
            row.push_back(fmt::format("{:.1f}", link.bytesPerSecond / bytes));
        }
        row.emplace_back(link.assumption);
        table.AddRow(std::move(row));
    }
    return table.Text();
}

std::string BenchText(const std::vector<Throughput>& results, int threads) {
    return fmt::format("Conversion to BGR8 with {} threads:\n\n{}\nFrames per second that links deliver:\n\n{}",
                       threads, ThroughputTable(results), LinkTable(results));
}

std::string BenchJson(const std::vector<Throughput>& results, int threads) {
    auto rows = nlohmann::ordered_json::array();
    for (const Throughput& result : results) {
        rows.push_back({{"format", frame::Name(result.format)},
                        {"width", result.width},
                        {"height", result.height},
                        {"algorithm", result.algorithm},
                        {"finished", result.isFinished},
                        {"seconds", result.seconds},
                        {"frames_per_second", result.FramesPerSecond()},
                        {"pixels_per_second", result.PixelsPerSecond()},
                        {"bytes_per_second", result.BytesPerSecond()}});
    }
    auto links = nlohmann::ordered_json::array();
    for (const CameraLink& link : kCameraLinks) {
        links.push_back(
            {{"name", link.name}, {"bytes_per_second", link.bytesPerSecond}, {"assumption", link.assumption}});
    }
    return JsonText({{"threads", threads}, {"results", rows}, {"links", links}});
}

void Bench(const BenchOptions& options) {
    const BenchmarkPlan plan = MakePlan(options);
    const int threads = frame::TeamSize(UINT64_MAX, plan.threads);
    const auto results = WithExitCode(ExitCode::Library, "bench", [&plan] { return MeasureThroughput(plan); });
    PrintText(options.asJson ? BenchJson(results, threads) : BenchText(results, threads));
}

}  // namespace

void AddBenchCommand(CLI::App& tool) {
    const auto options = std::make_shared<BenchOptions>();
    CLI::App* command = tool.add_subcommand("bench", "Measure conversion speed and compare it with camera link rates");
    const auto addList = [command](const char* option, std::vector<std::string>& values, const char* help,
                                   const char* type) {
        command->add_option(option, values, help)->type_name(type)->allow_extra_args(false);
    };
    addList("--format", options->formats,
            "Format of the frames, repeatable; default: BayerRG8, BayerRG12p and SCF1WBWG12", "NAME");
    addList("--size", options->sizes, "Size of the frames, repeatable; default: 1920x1200", "WxH");
    addList("--algorithm", options->algorithms, "Algorithm, repeatable; default: all", "NAME");
    AddNumber(*command, "--threads", options->threads, "Number of threads; 0, the default: one per core",
              frame::kMaxThreads);
    AddNumber(*command, "--milliseconds", options->milliseconds, "Time for each measurement; default: 200",
              kMaximumMilliseconds);
    AddJsonFlag(*command, options->asJson);
    command->footer(kFooter);
    command->callback([options] { Bench(*options); });
}

}  // namespace kvx::tool
