#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "tools/RawFrame.h"

namespace kvx::tool {

/** What the user says about a frame; the rest comes from the file, or from its name. */
struct FrameRequest {
    const PixelFormat* format = nullptr;
    std::optional<uint64_t> width;
    std::optional<uint64_t> height;
    std::optional<uint64_t> stride;
    std::optional<uint64_t> skipBytes;
};

struct FrameInput {
    RawFrame frame;
    std::string inferred;  ///< what was taken from the name, for the user; often empty
};

/** Reads a frame that `convert` takes, from a headerless or a picture file, or from standard input for "-". */
FrameInput ReadFrame(const std::string& path, const FrameRequest& request);

}  // namespace kvx::tool
