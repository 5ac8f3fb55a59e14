#pragma once

#include <CLI/CLI.hpp>

namespace kvx::tool {

/** Adds `kvx-demosaic formats`: the library's table of pixel formats. */
void AddFormatsCommand(CLI::App& tool);

}  // namespace kvx::tool
