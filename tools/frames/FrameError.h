#pragma once

#include <string>

#include "KvxFrame/Error.h"
#include "tools/ToolError.h"

namespace kvx::tool {

/** Runs `action`; an error of the frame layer ends the command with `code`. */
template <typename Action>
auto WithExitCode(ExitCode code, const std::string& subject, const Action& action) {
    try {
        return action();
    } catch (const frame::Error& error) {
        Fail(code, "{}: {}", subject, error.what());
    }
}

}  // namespace kvx::tool
