#pragma once

#include <CLI/CLI.hpp>

namespace kvx::tool {

// Each function adds one sub-command, its options and its help text; `pack` and `unpack` share one.

void AddBenchCommand(CLI::App& tool);
void AddCalibrateCommand(CLI::App& tool);
void AddCompareCommand(CLI::App& tool);
void AddConvertCommand(CLI::App& tool);
void AddDemoCommand(CLI::App& tool);
void AddExplainCommand(CLI::App& tool);
void AddFormatsCommand(CLI::App& tool);
void AddGuessCommand(CLI::App& tool);
void AddInfoCommand(CLI::App& tool);
void AddMosaicCommand(CLI::App& tool);
void AddPackCommands(CLI::App& tool);
void AddParamsCommand(CLI::App& tool);
void AddTuneCommand(CLI::App& tool);

}  // namespace kvx::tool
