#pragma once

#include <CLI/CLI.hpp>

namespace kvx::tool {

/** Adds the sub-command that tells what convert would do with a frame. */
void AddInfoCommand(CLI::App& tool);

}  // namespace kvx::tool
