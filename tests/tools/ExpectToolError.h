#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tools/ToolError.h"

namespace kvx::tool {

/** Expects that `action` throws a ToolError of this code whose message holds `fragment`. */
template <typename Action>
void ExpectToolError(ExitCode code, const std::string& fragment, Action action) {
    try {
        action();
        ADD_FAILURE() << "nothing was thrown; expected: " << fragment;
    } catch (const ToolError& error) {
        EXPECT_EQ(error.Code(), code) << error.what();
        EXPECT_NE(std::string(error.what()).find(fragment), std::string::npos) << error.what();
    }
}

}  // namespace kvx::tool
