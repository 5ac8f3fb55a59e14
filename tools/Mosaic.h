#pragma once

#include "tools/Picture.h"
#include "tools/RawFrame.h"

namespace kvx::tool {

/** What a sensor of this unpacked mosaic format would see of the picture. Clear sites see the mean of the colours. */
RawFrame MakeMosaic(const Picture& picture, const PixelFormat& format);

}  // namespace kvx::tool
