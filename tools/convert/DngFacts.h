#pragma once

#include <optional>

#include "tools/convert/FrameJob.h"

namespace kvx::tool {

/** Whether there are settings of the picture, which a DNG file, with the frame itself, cannot hold. */
bool AsksForPicture(const ConvertSettings& settings);

/** What a DNG file of this frame says: levels, gains, measured ones too, and matrix of the plan; and orientation. */
Sidecar DngFacts(const FinishPlan& plan, const frame::SourceView& source, std::optional<uint64_t> orientation);

/** What the user should know: unknown keys of the sidecar, missing colours, and what of the camera does not apply. */
std::vector<std::string> DngHints(const Sidecar& known, const Sidecar& sidecar, const frame::CameraProfile* camera);

}  // namespace kvx::tool
