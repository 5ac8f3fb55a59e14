#pragma once

#include <functional>
#include <vector>

#include "tools/convert/FrameJob.h"

namespace kvx::tool {

/** Frames at a time, and threads for each of them. */
struct Workforce {
    int jobs;
    int threads;
};

/**
 * Shares `threads` (0: one for each core) among the frames: as many at a time as there are threads, since reading and
 * encoding are work for one, or `jobs` (0: left open).
 */
Workforce ShareThreads(size_t files, int jobs, int threads);

/**
 * Converts all files, `jobs` at a time, and calls `done` after each, never from two threads at once. A file that fails
 * does not stop the others; what `done` throws does, and is thrown. The reports are in the order of the tasks.
 */
std::vector<FileReport> RunBatch(const std::vector<FileTask>& tasks, const ConvertSettings& settings, int jobs,
                                 const std::function<void(const FileReport&)>& done);

}  // namespace kvx::tool
