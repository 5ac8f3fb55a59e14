#pragma once

#include <string>

#include "KvxFrame/Converter.h"
#include "tools/ToolError.h"
#include "tools/files/Picture.h"

namespace kvx::tool {

/** The family called "bayer" or "truesense". Throws ExitCode::Usage. */
frame::Family FamilyNamed(const std::string& name);

/**
 * Converts a frame for a destination that IsConvertDestination() accepts. The picture has the full range of its 8 or
 * 16-bit samples, as files want it. Throws ExitCode::Library; `name` is for messages.
 */
Picture ConvertFrame(frame::Converter& converter, const frame::SourceView& source, const frame::Format& destination,
                     const std::string& name);

/** Runs `action`; what the frame layer refuses in it ends the command with `code`. */
template <typename Action>
auto OrExit(ExitCode code, const std::string& subject, const Action& action) {
    try {
        return action();
    } catch (const frame::Error& error) {
        Fail(code, "{}: {}", subject, error.what());
    }
}

}  // namespace kvx::tool
