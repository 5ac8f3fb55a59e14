#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tools/files/PictureEncoder.h"

namespace kvx::tool {

/** One frame, and the picture to make from it. */
struct FileTask {
    std::string input;
    std::string output;
    std::optional<PictureKind> kind;     ///< nothing: a DNG file, which holds the frame itself
    std::optional<uint64_t> frame = {};  ///< of an input with several
};

/**
 * Pairs frames with pictures. `output` is empty (`files` is a frame and its picture), the picture of a single frame, a
 * directory (existing, or ending in a slash; it gets PNG files), or a pattern in which "{stem}" stands for a frame's
 * name without directory and extension. Throws ExitCode::Usage when that is ambiguous, or when two pictures, or a
 * picture and a frame, would be the same file.
 *
 * With `countFrames` each file has that many frames, and "{frame}" in the pattern stands for their numbers.
 */
std::vector<FileTask> PlanFiles(const std::vector<std::string>& files, const std::string& output,
                                const std::function<uint64_t(const std::string&)>& countFrames = {});

}  // namespace kvx::tool
