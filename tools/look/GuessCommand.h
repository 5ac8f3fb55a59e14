#pragma once

#include <CLI/CLI.hpp>

namespace kvx::tool {

/** Adds the sub-command that finds out the format of a frame. */
void AddGuessCommand(CLI::App& tool);

}  // namespace kvx::tool
