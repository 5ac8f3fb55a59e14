#pragma once

#include <CLI/CLI.hpp>

namespace kvx::tool {

/** Adds the sub-command that draws a format and tells its names. */
void AddExplainCommand(CLI::App& tool);

}  // namespace kvx::tool
