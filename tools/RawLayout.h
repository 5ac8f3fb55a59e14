#pragma once

#include <cstdint>
#include <string>

#include "tools/RawFrame.h"

namespace kvx::tool {

/** Where the samples of a headerless file are. */
struct RawLayout {
    const PixelFormat* format;
    uint64_t width;          ///< pixels
    uint64_t height;         ///< rows
    uint64_t stride;         ///< bytes from row to row
    uint64_t skipBytes = 0;  ///< in front of the first row
};

/** Refuses sizes that no conversion takes: none, or past INT_MAX pixels or bytes per row. Throws ExitCode::Frame. */
void CheckFrameSize(uint64_t width, uint64_t height, const std::string& name);

/**
 * Takes the frame out of a headerless file, whose size must be that of the layout; the last row may lack its padding.
 * Throws ExitCode::Frame, with the option that would help. `name` is for messages.
 */
RawFrame CutFrame(const Bytes& content, const RawLayout& layout, const std::string& name);

}  // namespace kvx::tool
