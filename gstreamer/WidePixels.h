/** Orders of four 16-bit samples that the frame layer does not write. */
#pragma once

#include <cstddef>

namespace kvx::gst {

/** Changes to a pixel whose alpha is last and whose samples are little-endian. */
struct WidePixelChange {
    bool alphaFirst = false;
    bool bigEndian = false;
};

/** Changes `count` pixels in place, at any address. */
void ChangeWidePixels(void* pixels, size_t count, WidePixelChange change);

}  // namespace kvx::gst
