/** Which frames a camera profile is for. */
#pragma once

#include "KvxFrame/CameraProfile.h"

namespace kvx::frame {

/** Whether the profile has something that belongs to single pixels of a frame. */
bool HasMaps(const CameraProfile& profile);

}  // namespace kvx::frame
