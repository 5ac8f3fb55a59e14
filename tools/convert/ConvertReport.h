#pragma once

#include <string>
#include <vector>

#include "tools/convert/FrameJob.h"

namespace kvx::tool {

/** One line of JSON about a file, its line break included. */
std::string ReportLine(const FileReport& report);

/** Tells on standard error what failed and why; of a single frame also what was inferred. The exit code of the run. */
ExitCode Conclude(const std::vector<FileReport>& reports);

}  // namespace kvx::tool
