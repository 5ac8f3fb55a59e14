#pragma once

#include <CLI/CLI.hpp>

namespace kvx::tool {

/** Adds `kvx-demosaic params`: the parameters that `convert --set` takes. */
void AddParamsCommand(CLI::App& tool);

}  // namespace kvx::tool
