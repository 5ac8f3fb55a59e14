#pragma once

#include <CLI/CLI.hpp>

namespace kvx::tool {

/** Adds `kvx-demosaic convert`: a raw Bayer frame becomes a colour picture. */
void AddConvertCommand(CLI::App& tool);

}  // namespace kvx::tool
