#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tools/files/RawFrame.h"
#include "tools/files/Sidecar.h"

namespace kvx::tool {

/** What the user specifies of a frame; the rest comes from its sidecar, its name, or the file itself. */
struct FrameRequest {
    std::optional<frame::Format> format;
    std::optional<uint64_t> width;
    std::optional<uint64_t> height;
    std::optional<uint64_t> stride;
    std::optional<uint64_t> skipBytes;
    std::optional<uint64_t> frame;  ///< of a headerless file with several, from 0; nothing: it has one
    bool useSidecar = true;
};

/** A property of a frame, and its source. */
struct FrameFact {
    std::string name;  ///< "format", "width", "height", "stride" or "offset"
    std::string value;
    std::string origin;  ///< "options", "sidecar", "name" or "header"
};

struct FrameInput {
    RawFrame frame;
    frame::Format fileFormat;  ///< of the file, packed or not
    Sidecar sidecar;           ///< what the JSON file says, else a camera raw file itself
    Sidecar ofFile;            ///< those parts of `sidecar` that a camera raw file itself gave
    std::vector<FrameFact> facts;
    std::string inferred;  ///< a message about what the sidecar and the name gave; often empty
};

/** Frames in a headerless file. Throws as ReadFrame(). */
uint64_t CountFrames(const std::string& path, const FrameRequest& request);

/** Reads a frame from a headerless, picture or camera raw file, or from standard input for "-". */
FrameInput ReadFrame(const std::string& path, const FrameRequest& request);

}  // namespace kvx::tool
