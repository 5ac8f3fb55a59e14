#pragma once

#include <optional>
#include <string>

#include "KvxFrame/SensorNoise.h"
#include "tools/files/RawFrame.h"
#include "tools/files/Sidecar.h"

namespace kvx::tool {

enum class FrameKind { Raw, Pgm, Dng, Npy };

/** By the extension .pgm, .dng or .npy, in any case; anything else is headerless. */
FrameKind FrameKindFor(const std::string& path);

/** How to write the file of a frame. */
struct FrameFile {
    std::string path;                    ///< "-" for standard output
    std::optional<FrameKind> kind = {};  ///< nothing: by the extension
    frame::Layout layout = frame::Layout::Plain;
    frame::RowPadding padding = frame::RowPadding::Line;
    bool hasSidecar = true;
};

/**
 * Writes a frame, and what `known` says of levels, gains, matrix and orientation: in a DNG file with the noise, for
 * other kinds in a sidecar, unless the frame goes to standard output. Throws ExitCode::Usage for a layout or mosaic
 * that does not exist for the depth or the kind of file, and ExitCode::Output.
 */
void WriteFrame(const FrameFile& file, const RawFrame& frame, const Sidecar& known = {},
                const std::optional<frame::SensorNoise>& noise = {});

}  // namespace kvx::tool
