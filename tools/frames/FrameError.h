#pragma once

#include <string>

#include "KvxFrame/Error.h"
#include "tools/ToolError.h"

namespace kvx::tool {

/** Runs `action`; what the frame layer refuses in it ends the command with `code`. */
template <typename Action>
auto WithExitCode(ExitCode code, const std::string& subject, const Action& action) {
    try {
        return action();
    } catch (const frame::Error& error) {
        Fail(code, "{}: {}", subject, error.what());
    }
}

}  // namespace kvx::tool
