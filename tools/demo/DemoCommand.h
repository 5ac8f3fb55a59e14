#pragma once

#include <CLI/CLI.hpp>

namespace kvx::tool {

/** Adds `kvx-demosaic demo`: a drawn scene, raw frames of it, and what they convert to. */
void AddDemoCommand(CLI::App& tool);

}  // namespace kvx::tool
