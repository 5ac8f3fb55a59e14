#include "tools/commands/Commands.h"

#include <fmt/format.h>

#include <memory>
#include <nlohmann/json.hpp>

#include "KvxFrame/Converter.h"
#include "tools/console/Arguments.h"
#include "tools/console/Console.h"
#include "tools/console/TextTable.h"
#include "tools/convert/FrameHints.h"
#include "tools/files/InputFile.h"
#include "tools/frames/FrameOptions.h"
#include "tools/frames/FrameReader.h"
#include "tools/look/FormatDrawing.h"
#include "tools/look/SampleStatistics.h"

namespace kvx::tool {
namespace {

constexpr const char* kFooter = R"(Reads the frame as convert does, and fails with the same message and exit code if the
file has the wrong size or a sample exceeds the depth. 'likely depth' is the smallest
depth that holds all samples; low bits that are never set do not count. The last rows list
the finish, which sidecar, look and the options of convert give, and where each part is
from.

Examples:
  kvx-demosaic info scene_1920x1200_BayerRG12.raw
  kvx-demosaic info frame.pgm --format BayerRG14 --json)";

struct InfoOptions {
    std::string input;
    FrameRequest request;
    FinishRequest finish;
    bool asJson = false;
};

/** Words of 16 bits whose low bits are never set are most likely left-aligned. */
std::string LikelyDepth(const RawFrame& frame, const SampleStatistics& statistics) {
    const unsigned unused = statistics.lowestBit;
    if (frame.format.bits == 16 && unused >= 2) {
        return fmt::format("{} bits in the high bits of words", 16 - unused);
    }
    return fmt::format("{} bits", BitsUsed(frame.samples));
}

std::string AlgorithmText(frame::Family family) {
    const auto& algorithms = frame::AlgorithmsOf(family);
    return algorithms.empty() ? "none (mono becomes grey)" : algorithms.front().name;
}

/** The parts of the finish with their values and origins. */
nlohmann::ordered_json PlanJson(const FinishPlan& plan) {
    auto parts = nlohmann::ordered_json::object();
    for (const FrameFact& fact : plan.facts) {
        parts[fact.name] = {{"value", fact.value}, {"origin", fact.origin}};
    }
    return parts;
}

nlohmann::ordered_json InfoJson(const FrameInput& input, const FinishPlan& plan, const std::string& name) {
    const RawFrame& frame = input.frame;
    const SampleStatistics statistics = MeasureSamples(frame);
    nlohmann::ordered_json origins = nlohmann::ordered_json::object();
    for (const FrameFact& fact : input.facts) {
        origins[fact.name] = fact.origin;
    }
    return {{"file", name},
            {"format", frame::Name(input.fileFormat)},
            {"description", DescribeFormat(input.fileFormat)},
            {"width", frame.samples.cols},
            {"height", frame.samples.rows},
            {"file_size", "fits"},
            {"origins", origins},
            {"smallest", statistics.smallest},
            {"largest", statistics.largest},
            {"mean", statistics.mean},
            {"white", frame::White(frame.format)},
            {"bits_used", statistics.highestBit},
            {"likely_depth", LikelyDepth(frame, statistics)},
            {"clipped_share", statistics.clippedShare},
            {"black_share", statistics.blackShare},
            {"destination", "RGB8"},
            {"algorithm", AlgorithmText(frame.format.family)},
            {"finish", PlanJson(plan)}};
}

std::string OriginText(const FrameInput& input, const std::string& factName) {
    for (const FrameFact& fact : input.facts) {
        if (fact.name == factName) {
            return fmt::format(" (from the {})", fact.origin);
        }
    }
    return "";
}

std::string InfoText(const FrameInput& input, const nlohmann::ordered_json& info) {
    TextTable table({"file", info["file"]});
    const auto percent = [](double share) { return fmt::format("{:.3f} %", 100 * share); };
    table.AddRow({"format", fmt::format("{}{}", frame::Name(input.fileFormat), OriginText(input, "format"))});
    table.AddRow({"", info["description"]});
    table.AddRow({"width", fmt::format("{}{}", input.frame.samples.cols, OriginText(input, "width"))});
    table.AddRow({"height", fmt::format("{}{}", input.frame.samples.rows, OriginText(input, "height"))});
    for (const FrameFact& fact : input.facts) {
        if (fact.name == "stride" || fact.name == "offset" || fact.name == "frame") {
            table.AddRow({fact.name, fmt::format("{}{}", fact.value, OriginText(input, fact.name))});
        }
    }
    table.AddRow({"file size", "fits"});
    table.AddRow({"samples", fmt::format("{} to {}, mean {:.1f}, white is {}", info["smallest"].get<uint32_t>(),
                                         info["largest"].get<uint32_t>(), info["mean"].get<double>(),
                                         info["white"].get<uint32_t>())});
    table.AddRow({"bits used", fmt::format("{}", info["bits_used"].get<unsigned>())});
    table.AddRow({"likely depth", info["likely_depth"]});
    table.AddRow({"clipped", percent(info["clipped_share"])});
    table.AddRow({"black", percent(info["black_share"])});
    table.AddRow({"converts to", fmt::format("{} by default", info["destination"].get<std::string>())});
    table.AddRow({"algorithm", fmt::format("{} by default", info["algorithm"].get<std::string>())});
    if (info["finish"].empty()) {
        table.AddRow({"finish", "none"});
    }
    for (const auto& [part, choice] : info["finish"].items()) {
        table.AddRow({part, fmt::format("{} (from the {})", choice["value"].get<std::string>(),
                                        choice["origin"].get<std::string>())});
    }
    return table.Text();
}

void Info(const InfoOptions& options) {
    const FrameInput input = ReadFrame(options.input, options.request);
    const std::string name = InputName(options.input);
    const FinishPlan plan = PlanFinish(options.finish, input, name);
    const auto info = InfoJson(input, plan, name);
    PrintText(options.asJson ? JsonText(info) : InfoText(input, info));
    for (const std::string& hint : FrameHints(options.finish, input, plan)) {
        PrintMessage(fmt::format("{}: {}", name, hint));
    }
}

}  // namespace

void AddInfoCommand(CLI::App& tool) {
    const auto options = std::make_shared<InfoOptions>();
    CLI::App* command = tool.add_subcommand("info", "Show what convert would do with a frame, and why");
    AddFrameArgument(*command, options->input);
    AddFrameOptions(*command, options->request);
    AddFinishOptions(*command, options->finish);
    AddJsonFlag(*command, options->asJson);
    command->footer(kFooter);
    command->callback([options] { Info(*options); });
}

}  // namespace kvx::tool
