#pragma once

#include <CLI/CLI.hpp>

namespace kvx::tool {

/** Adds the sub-command that shows what each algorithm makes of a frame. */
void AddCompareCommand(CLI::App& tool);

}  // namespace kvx::tool
