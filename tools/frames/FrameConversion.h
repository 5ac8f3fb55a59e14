#pragma once

#include <string>

#include "KvxFrame/Converter.h"
#include "tools/files/Picture.h"

namespace kvx::tool {

/** The family called "bayer" or "truesense". Throws ExitCode::Usage. */
frame::Family FamilyNamed(const std::string& name);

/**
 * Converts a frame for a destination that IsConvertDestination() accepts. The picture has 8 or 16-bit samples and their
 * full range, as files need it. Throws ExitCode::Library; `name` is for messages.
 */
Picture ConvertFrame(frame::Converter& converter, const frame::SourceView& source, const frame::Format& destination,
                     const std::string& name);

}  // namespace kvx::tool
