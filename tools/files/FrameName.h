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

/** What the name of a raw file tells about its content, as in "scene_1920x1200_BayerRG12.raw". */
struct FrameName {
    std::optional<FrameSize> size;
    std::optional<frame::Format> format;
};

/**
 * Reads the last component of a path. A token ends where letters and digits end. Of several formats the longest name
 * counts, of those that the library, PFNC and the frame layer use; what stays ambiguous (two sizes, two formats of
 * equal length) is not taken.
 */
FrameName ParseFrameName(const std::string& path);

/** The name that ParseFrameName() understands: "<stem>_<width>x<height>_<format>.raw". */
std::string MakeFrameName(const std::string& stem, FrameSize size, const frame::Format& format);

}  // namespace kvx::tool
