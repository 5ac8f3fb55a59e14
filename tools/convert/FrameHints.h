#pragma once

#include <string>
#include <vector>

#include "tools/convert/FinishPlan.h"

namespace kvx::tool {

/** What the user should know before a conversion: unknown keys of the sidecar, and what a linear frame needs. */
std::vector<std::string> FrameHints(const FinishRequest& request, const FrameInput& input, const FinishPlan& plan);

}  // namespace kvx::tool
