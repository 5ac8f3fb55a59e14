#pragma once

#include <CLI/CLI.hpp>

#include "tools/frames/FrameReader.h"

namespace kvx::tool {

/** Adds the options that say what a frame is, and how its file is laid out: --format, --width and so on. */
void AddFrameOptions(CLI::App& command, FrameRequest& request);

}  // namespace kvx::tool
