#pragma once

#include <CLI/CLI.hpp>

namespace kvx::tool {

/** Adds `kvx-demosaic mosaic`: a picture becomes a raw frame. */
void AddMosaicCommand(CLI::App& tool);

}  // namespace kvx::tool
