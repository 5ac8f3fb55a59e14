#pragma once

#include <string>
#include <vector>

#include "KvxDemosaicing/KvxPixelFormat.h"
#include "KvxFrame/Format.h"

namespace kvx::tool {

using PixelFormat = _KvxPixelFormat;

/** The library's table, in its order. */
const std::vector<const PixelFormat*>& AllFormats();

/** The format with this name, in any naming scheme. Throws ExitCode::Usage with the nearest names. */
frame::Format RequireFormat(const std::string& name);

/** The same for a format of mono, Bayer or TrueSense frames; `option` is for the message. */
frame::Format RequireFrameFormat(const std::string& option, const std::string& name);

/** Three-channel colour: what `convert` makes. */
bool IsConvertDestination(const frame::Format& format);

}  // namespace kvx::tool
