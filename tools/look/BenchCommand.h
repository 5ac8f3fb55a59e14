#pragma once

#include <CLI/CLI.hpp>

namespace kvx::tool {

/** Adds the sub-command that measures this machine. */
void AddBenchCommand(CLI::App& tool);

}  // namespace kvx::tool
