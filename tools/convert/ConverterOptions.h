#pragma once

#include <CLI/CLI.hpp>
#include <optional>

#include "tools/convert/FrameJob.h"

namespace kvx::tool {

/** Adds --algorithm, --analog-gain and --set. */
void AddConverterOptions(CLI::App& command, ConvertSettings& settings);

/**
 * A converter with these options, the camera and the threads of the settings, but without a finish: that of a frame has
 * the camera's colours already, see PlanFinish(). Throws ExitCode::Usage and ExitCode::Library.
 *
 * @param origin place of the frames in those of the camera, if they are regions
 */
frame::Converter MakeConverter(const ConvertSettings& settings, frame::Family family,
                               const std::optional<frame::Site>& origin);

}  // namespace kvx::tool
