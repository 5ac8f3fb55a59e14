#pragma once

#include <optional>
#include <string>

#include "tools/files/RawFrame.h"
#include "tools/files/Sidecar.h"

namespace kvx::tool {

/** The visible part of the mosaic in a camera's own raw file, or a DNG file, and what the file says of it. */
struct CameraRaw {
    RawFrame frame;
    Sidecar known;  ///< levels, as-shot (else daylight) gains, matrix and orientation, as far as the file has them
};

/** Whether a file that starts with these bytes can be a camera raw file. */
bool MayBeCameraRaw(const Bytes& start);

/**
 * Reads what LibRaw decodes to a Bayer mosaic. Nothing for content that is no camera raw file; the extension of `path`
 * decides whether a TIFF file without DNG version is one. Throws ExitCode::Input for damaged files and other mosaics,
 * ExitCode::Frame for too large ones; `name` is for messages.
 */
std::optional<CameraRaw> DecodeCameraRaw(const Bytes& content, const std::string& path, const std::string& name);

}  // namespace kvx::tool
