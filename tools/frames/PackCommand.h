#pragma once

#include <CLI/CLI.hpp>

namespace kvx::tool {

/** Adds `pack` and `unpack`. */
void AddPackCommands(CLI::App& tool);

}  // namespace kvx::tool
