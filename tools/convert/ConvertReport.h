#pragma once

#include <string>
#include <vector>

#include "tools/convert/FrameJob.h"

namespace kvx::tool {

/** One line of JSON about a file, including its line break. */
std::string ReportLine(const FileReport& report);

/** Reports on standard error what failed and why, for a single frame also what was inferred. @return the exit code */
ExitCode Conclude(const std::vector<FileReport>& reports);

}  // namespace kvx::tool
