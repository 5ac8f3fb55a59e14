#include "tools/convert/ConvertReport.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "tools/console/Console.h"

namespace kvx::tool {

std::string ReportLine(const FileReport& report) {
    nlohmann::ordered_json json = {{"input", report.task.input}, {"output", report.task.output}};
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
        json["inferred"] = report.inferred;
    }
    json["seconds"] = report.time.count();
    return JsonText(json, -1);
}

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
        return ExitCode::Success;
    }
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
