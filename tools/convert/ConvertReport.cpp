#include "tools/convert/ConvertReport.h"

#include <map>
#include <nlohmann/json.hpp>

#include "tools/console/Console.h"

namespace kvx::tool {

std::string ReportLine(const FileReport& report) {
    nlohmann::ordered_json json = {{"input", report.task.input}, {"output", report.task.output}};
    if (report.task.frame) {
        json["frame"] = *report.task.frame;
    }
    if (report.failure) {
        json["status"] = "failed";
        json["exitCode"] = static_cast<int>(report.failure->Code());
        json["error"] = report.failure->what();
    } else {
        json["status"] = "converted";
        json["format"] = report.format;
        json["width"] = report.width;
        json["height"] = report.height;
        json["algorithm"] = report.algorithm;
        json["gains"] = {{"R", report.gains.red}, {"G", report.gains.green}, {"B", report.gains.blue}};
        json["exposure"] = report.exposure;
        json["inferred"] = report.inferred;
        json["hints"] = report.hints;
    }
    json["seconds"] = report.time.count();
    return JsonText(json, -1);
}

namespace {

/** Prints each hint once, with the first frame that it is about. */
void PrintHints(const std::vector<FileReport>& reports) {
    std::map<std::string, std::vector<const FileReport*>> byText;
    for (const FileReport& report : reports) {
        for (const std::string& hint : report.hints) {
            byText[hint].push_back(&report);
        }
    }
    for (const auto& [text, about] : byText) {
        const std::string others = about.size() > 1 ? fmt::format(" and {} more", about.size() - 1) : "";
        PrintMessage(fmt::format("{}{}: {}", about.front()->task.input, others, text));
    }
}

}  // namespace

ExitCode Conclude(const std::vector<FileReport>& reports) {
    if (reports.size() == 1) {
        const FileReport& report = reports.front();
        if (report.failure) {
            PrintMessage(report.failure->what());
            return report.failure->Code();
        }
        if (!report.inferred.empty()) {
            PrintMessage(fmt::format("{}: {}", report.task.input, report.inferred));
        }
        PrintHints(reports);
        return ExitCode::Success;
    }
    PrintHints(reports);
    size_t failures = 0;
    for (const FileReport& report : reports) {
        if (report.failure) {
            // Not every message names its file.
            const std::string reason = report.failure->what();
            const bool isNamed = reason.starts_with(report.task.input) || reason.starts_with(report.task.output);
            PrintMessage(isNamed ? reason : fmt::format("{}: {}", report.task.input, reason));
            ++failures;
        }
    }
    if (failures == 0) {
        return ExitCode::Success;
    }
    PrintMessage(fmt::format("{} of {} frames failed", failures, reports.size()));
    return ExitCode::SomeFailed;
}

}  // namespace kvx::tool
