#pragma once

#include <cstdint>
#include <optional>
#include <string>

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
 * Reads the frame from a headerless file, which must have the size of the layout; the last row may lack its padding.
 * Rows of a packed layout without a stride start with a byte, or follow each other bit by bit: the size decides.
 * Throws ExitCode::Frame, with the option that would help. `name` is for messages.
 */
RawFrame CutFrame(const Bytes& content, const RawLayout& layout, const std::string& name);

/** From the start of a frame to that of the next one in a file with several; rows start with a byte. */
uint64_t FrameBytes(const RawLayout& layout);

/** Frames in a file of that many bytes. Throws ExitCode::Frame for no frame, or a part of one. */
uint64_t FrameCount(const RawLayout& layout, uint64_t fileBytes, const std::string& name);

}  // namespace kvx::tool
