#pragma once

#include "KvxFrame/Mosaic.h"
#include "tools/files/Picture.h"
#include "tools/files/RawFrame.h"

namespace kvx::tool {

/** What a sensor of this mono or mosaic format would see of the picture; samples are not packed. */
RawFrame MakeMosaic(const Picture& picture, const frame::Format& format, frame::Sensor sensor = {});

}  // namespace kvx::tool
