#pragma once

#include <CLI/CLI.hpp>

namespace kvx::tool {

// Each function adds one step of `calibrate`: a sub-command that adds what it measures to a camera profile.

void AddCalibrateChart(CLI::App& calibrate);
void AddCalibrateDark(CLI::App& calibrate);
void AddCalibrateFlat(CLI::App& calibrate);

}  // namespace kvx::tool
