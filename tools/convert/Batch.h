#pragma once

#include <functional>
#include <vector>

#include "tools/convert/FrameJob.h"

namespace kvx::tool {

/** Frames that are converted at the same time, and threads for each of them. */
struct Workforce {
    int jobs;
    int threads;
};

/**
 * Shares `threads` (0: OpenMP's setting; at most what frame::TeamSize() allows) among `jobs` frames at a time (0: as
 * many as there are threads, since reading and encoding use one thread).
 */
Workforce ShareThreads(size_t files, int jobs, int threads);

/**
 * Converts all files, `jobs` at a time, and calls `done` after each, never from two threads at once. A file that fails
 * does not stop the others; an exception of `done` does, and is rethrown. The reports are in the order of the tasks.
 */
std::vector<FileReport> RunBatch(const std::vector<FileTask>& tasks, const ConvertSettings& settings, int jobs,
                                 const std::function<void(const FileReport&)>& done);

}  // namespace kvx::tool
