#include "tools/calibrate/chart/ChartReport.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "tools/console/TextTable.h"

namespace kvx::tool {
namespace {

/** Ratio of gains from which on two lights are not the same. */
constexpr double kOtherLight = 1.1;

std::string ErrorText(double error) {
    return error < 0 ? "clipped" : fmt::format("{:.2f}", error);
}

}  // namespace

std::string ChartTable(const ColourFit& fit, const std::vector<std::string>& names) {
    std::vector<std::string> heading = {"CIEDE2000"};
    for (const std::string& name : names) {
        heading.push_back(names.size() == 1 ? "before" : name + ": before");
        heading.emplace_back("after");
    }
    TextTable table(heading);
    for (int patch = 0; patch < kChartPatches; ++patch) {
        std::vector<std::string> row = {std::string(ChartPatches()[patch].name)};
        for (const ChartResult& chart : fit.charts) {
            row.push_back(ErrorText(chart.before[patch]));
            row.push_back(ErrorText(chart.after[patch]));
        }
        table.AddRow(row);
    }
    std::vector<std::string> means = {"mean"};
    for (const ChartResult& chart : fit.charts) {
        means.push_back(ErrorText(MeanError(chart.before)));
        means.push_back(ErrorText(MeanError(chart.after)));
    }
    table.AddRow(means);
    std::string text = table.Text();
    text += fmt::format("\ngains   {:.4f}, {:.4f}, {:.4f}\n", fit.gains.red, fit.gains.green, fit.gains.blue);
    for (int row = 0; row < 3; ++row) {
        text += fmt::format("{}{:8.4f} {:8.4f} {:8.4f}\n", row == 0 ? "matrix" : "      ", fit.matrix(row, 0),
                            fit.matrix(row, 1), fit.matrix(row, 2));
    }
    return text;
}

std::string LightWarning(const ColourFit& fit) {
    double farthest = 1;
    for (const ChartResult& chart : fit.charts) {
        for (const double ratio : {chart.gains.red / chart.gains.green / fit.gains.red * fit.gains.green,
                                   chart.gains.blue / chart.gains.green / fit.gains.blue * fit.gains.green}) {
            farthest = std::max({farthest, ratio, 1 / ratio});
        }
    }
    return farthest < kOtherLight ? ""
                                  : fmt::format(
                                        "the charts are in different lights, and the profile has the mean of "
                                        "their gains: up to {:.0f} % off; its matrix serves all of them",
                                        100 * (farthest - 1));
}

}  // namespace kvx::tool
