#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tools/files/RawFrame.h"
#include "tools/files/Sidecar.h"

namespace kvx::tool {

/** What the user says about a frame; the rest comes from its sidecar, from its name, or from the file itself. */
struct FrameRequest {
    std::optional<frame::Format> format;
    std::optional<uint64_t> width;
    std::optional<uint64_t> height;
    std::optional<uint64_t> stride;
    std::optional<uint64_t> skipBytes;
    bool useSidecar = true;
};

/** A fact about a frame that had to be found out. */
struct FrameFact {
    std::string name;  ///< "format", "width", "height", "stride" or "offset"
    std::string value;
    std::string origin;  ///< "options", "sidecar", "name" or "header"
};

struct FrameInput {
    RawFrame frame;
    frame::Format fileFormat;  ///< as the file has it, packed or not
    Sidecar sidecar;
    std::vector<FrameFact> facts;
    std::string inferred;  ///< what was taken from the sidecar and the name, for the user; often empty
};

/** Reads a frame from a headerless or a picture file, or from standard input for "-". */
FrameInput ReadFrame(const std::string& path, const FrameRequest& request);

}  // namespace kvx::tool
