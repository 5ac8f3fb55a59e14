#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "tools/files/InputFile.h"
#include "tools/files/RawFrame.h"

namespace kvx::tool {

/** Where the samples of a headerless file are. */
struct RawLayout {
    frame::Format format;
    uint64_t width;                  ///< pixels
    uint64_t height;                 ///< rows
    std::optional<uint64_t> stride;  ///< bytes from row to row; nothing: rows without padding, or packed through
    uint64_t skipBytes = 0;          ///< before the first row
};

/** Refuses empty frames, and more than INT_MAX pixels or bytes per row. Throws ExitCode::Frame. */
void CheckFrameSize(uint64_t width, uint64_t height, const std::string& name);

/**
 * Reads the frame of a headerless file, which must have the size of the layout; the last row may lack its padding.
 * Rows of a packed layout without a stride start with a byte, or follow each other bit by bit: the size decides.
 * Throws ExitCode::Frame, with the option that would help. `name` is for messages. The file is read in parts, so that
 * it takes no memory besides the frame's.
 */
RawFrame CutFrame(const InputFile& file, const RawLayout& layout, const std::string& name);

/** The same for frame `index` of several in a file, which FrameCount() must have counted. */
RawFrame CutFrame(const InputFile& file, const RawLayout& layout, uint64_t index);

/** Frames in a file of that many bytes, whose rows start with a byte. Throws ExitCode::Frame for no whole number. */
uint64_t FrameCount(const RawLayout& layout, uint64_t fileBytes, const std::string& name);

}  // namespace kvx::tool
