/** Calls of the tool's parsers, which may fail with a line for the user, and in no other way. */
#pragma once

#include <cstring>

#include "support/Input.h"
#include "tools/ToolError.h"

namespace kvx::fuzz {

/** @return whether `call` was refused, which it may only be with one of these exit codes */
template <class Call>
bool IsRefusedByTool(const Call& call, std::initializer_list<tool::ExitCode> documented) {
    try {
        call();
        return false;
    } catch (const tool::ToolError& error) {
        bool isDocumented = false;
        for (const tool::ExitCode code : documented) isDocumented = isDocumented || error.Code() == code;
        Require(isDocumented, "a documented exit code");
        Require(*error.what() != 0, "a refusal has a sentence");
        return true;
    }
}

}  // namespace kvx::fuzz
