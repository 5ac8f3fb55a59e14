#pragma once

#include <string>

#include "tools/BayerComponent.h"
#include "tools/Picture.h"
#include "tools/RawFrame.h"

namespace kvx::tool {

/**
 * Converts a Bayer frame with the component's algorithm, for a destination that CanConvert() accepts. The picture has
 * the full range of its 8 or 16-bit samples, as files want it. Throws ExitCode::Library; `name` is for messages.
 */
Picture ConvertFrame(const BayerComponent& component, const RawFrame& frame, const PixelFormat& destination,
                     const std::string& name);

}  // namespace kvx::tool
