#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "tools/frames/FrameReader.h"

namespace kvx::tool {

/** What the steps of a calibration have in common. */
struct StepOptions {
    std::vector<std::string> frames;
    std::string profile = "camera.json";
    FrameRequest request;
};

/** Adds FRAMES, --output and the options for the format of frames. */
void AddStepOptions(CLI::App& command, StepOptions& options);

}  // namespace kvx::tool
