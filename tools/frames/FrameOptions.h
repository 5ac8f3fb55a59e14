#pragma once

#include <CLI/CLI.hpp>

#include "tools/frames/FrameReader.h"

namespace kvx::tool {

/** Adds the options for the format of a frame and the layout of its file: --format, --width and so on. */
void AddFrameOptions(CLI::App& command, FrameRequest& request);

/** Adds the argument FRAME. */
void AddFrameArgument(CLI::App& command, std::string& path);

}  // namespace kvx::tool
