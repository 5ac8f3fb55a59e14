#pragma once

#include <string>

#include "tools/RawFrame.h"

namespace kvx::tool {

/**
 * Refuses a frame with samples beyond its format's depth, which would turn into wrong colours, and tells the likely
 * cause. Throws ExitCode::Frame. `name` is for messages.
 */
void CheckSampleDepth(const RawFrame& frame, const std::string& name);

}  // namespace kvx::tool
