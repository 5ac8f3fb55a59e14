#pragma once

#include "KvxFrame/CameraProfile.h"
#include "tools/calibrate/FrameStack.h"
#include "tools/calibrate/PairNoise.h"

namespace kvx::tool {

/** What evenly lit frames show of a camera, apart from what the profile gets. */
struct FlatFigures {
    double signal = 0;      ///< mean above the black level, as a share of white
    bool hasNoise = false;  ///< whether the slope of the noise was measured
};

/**
 * Measures evenly lit frames, with what the profile already has of frames without light, and enters what they show into
 * the profile. Throws ExitCode::Frame for frames that are clipped or too dark.
 */
FlatFigures CalibrateFlat(const FrameStack& stack, const PairNoise& pairs, frame::CameraProfile& profile);

}  // namespace kvx::tool
