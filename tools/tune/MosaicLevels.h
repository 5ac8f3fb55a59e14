#pragma once

#include <memory>

#include "KvxFrame/CameraProfile.h"
#include "tools/files/RawFrame.h"

namespace kvx::tool {

/**
 * The mosaic at half its size, with the same tile: each sample is the mean of those at its place in 2x2 tiles, so that
 * levels, gains and colours keep their meaning. A last odd row or column is left out.
 */
RawFrame Halved(const RawFrame& mosaic);

/** The profile for a halved mosaic: fixed pattern and shading. Defective pixels are means there and stay. */
frame::CameraProfile Halved(const frame::CameraProfile& profile);

}  // namespace kvx::tool
