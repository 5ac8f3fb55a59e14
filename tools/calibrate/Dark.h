#pragma once

#include "KvxFrame/CameraProfile.h"
#include "tools/calibrate/FrameStack.h"

namespace kvx::tool {

/** What frames without light show of a camera. */
struct DarkFigures {
    frame::Levels blackLevel;
    double noise = 0;    ///< standard deviation between frames, or within a single one, in samples
    double pattern = 0;  ///< standard deviation of the fixed pattern, in samples; 0 for a single frame
    bool keepsPattern = false;
};

/** Measures frames without light and enters what they show into the profile. */
DarkFigures CalibrateDark(const FrameStack& stack, frame::CameraProfile& profile);

}  // namespace kvx::tool
