#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/convert/FinishOptions.h"
#include "tools/frames/FrameReader.h"

namespace kvx::tool {

/** The finish of a frame. */
struct FinishPlan {
    std::optional<frame::Finish> finish;
    std::vector<FrameFact> facts;  ///< what it consists of, and where each part comes from: options, sidecar,
                                   ///< file (a camera raw file itself), camera or look
};

/**
 * Takes what the options leave open from the sidecar, then from the look. Without any of them there is no finish.
 * Throws ExitCode::Usage for a white balance that the sidecar or the place lacks, and for levels that do not fit.
 */
FinishPlan PlanFinish(const FinishRequest& request, const FrameInput& input, const std::string& name);

}  // namespace kvx::tool
