#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "KvxFrame/Format.h"

namespace kvx::tool {

struct FrameSize {
    uint64_t width;
    uint64_t height;

    bool operator==(const FrameSize&) const = default;
};

/** Size and format in the name of a raw file, as in "scene_1920x1200_BayerRG12.raw". */
struct FrameName {
    std::optional<FrameSize> size;
    std::optional<frame::Format> format;
};

/**
 * Reads the last component of a path. Tokens consist of letters and digits. Of several formats with names of the
 * library, PFNC or the frame layer, the longest name counts; what stays ambiguous (two sizes, two formats of equal
 * length) is ignored.
 */
FrameName ParseFrameName(const std::string& path);

/** A name for ParseFrameName(): "<stem>_<width>x<height>_<format>.raw". */
std::string MakeFrameName(const std::string& stem, FrameSize size, const frame::Format& format);

}  // namespace kvx::tool
