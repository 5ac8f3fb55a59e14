#pragma once

#include <string>

#include "tools/files/RawFrame.h"
#include "tools/files/Sidecar.h"

namespace kvx::tool {

/** How to write the file of a frame. */
struct FrameFile {
    std::string path;  ///< .pgm for a PGM file, anything else is headerless; "-" for standard output
    frame::Layout layout = frame::Layout::Plain;
    frame::RowPadding padding = frame::RowPadding::Line;
    bool hasSidecar = true;
};

/**
 * Writes a frame and, unless it goes to standard output, its sidecar: format and size, and from `known` the black and
 * white level, gains and matrix. Throws ExitCode::Usage for a layout that does not exist for the depth or the kind of
 * file, and ExitCode::Output.
 */
void WriteFrame(const FrameFile& file, const RawFrame& frame, const Sidecar& known = {});

}  // namespace kvx::tool
