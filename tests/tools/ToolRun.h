#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tools/files/Bytes.h"

namespace kvx::tool {

struct ToolResult {
    int exitCode;  ///< -1 when a signal ended the process
    Bytes standardOutput;
    std::string standardError;
    long peakKilobytes;  ///< of memory that was in use at once
};

/** The environment of a run. */
struct ToolSurroundings {
    Bytes standardInput = {};
    std::optional<uint64_t> fileSizeLimit = std::nullopt;  ///< bytes that the process may write to a file
    std::string standardOutputPath = {};                   ///< where it goes instead of into the result; "-": closed
    std::string standardErrorPath = {};                    ///< likewise
};

/** Runs the real kvx-demosaic. */
ToolResult RunTool(const std::vector<std::string>& arguments, const ToolSurroundings& surroundings = {});

/** Expects exit code 0. @return the result, with the streams */
ToolResult RunSuccessfully(const std::vector<std::string>& arguments, const ToolSurroundings& surroundings = {});

/** Standard output of a run that succeeds. */
std::string TextOf(const std::vector<std::string>& arguments);

/** Expects this exit code and one line on standard error with all of the fragments; nothing on standard output. */
void ExpectRefusal(const ToolResult& result, int exitCode, const std::vector<std::string>& fragments);

}  // namespace kvx::tool
