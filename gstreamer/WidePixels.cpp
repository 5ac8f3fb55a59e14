#include "gstreamer/WidePixels.h"

#include <bit>
#include <cstdint>
#include <cstring>

namespace kvx::gst {
namespace {

template <class Change>
void ForEachPixel(void* pixels, size_t count, const Change& change) {
    auto* bytes = static_cast<uint8_t*>(pixels);
    for (size_t index = 0; index < count; ++index) {
        uint64_t pixel = 0;
        std::memcpy(&pixel, bytes + index * sizeof pixel, sizeof pixel);
        pixel = change(pixel);
        std::memcpy(bytes + index * sizeof pixel, &pixel, sizeof pixel);
    }
}

uint64_t WithAlphaFirst(uint64_t pixel) {
    static_assert(std::endian::native == std::endian::little, "the first sample is the lowest one");
    return std::rotl(pixel, 16);
}

uint64_t WithBytesSwapped(uint64_t pixel) {
    constexpr uint64_t kLow = 0x00FF00FF00FF00FF;
    return (pixel & kLow) << 8 | (pixel >> 8 & kLow);
}

}  // namespace

void ChangeWidePixels(void* pixels, size_t count, WidePixelChange change) {
    if (change.alphaFirst && change.bigEndian) {
        ForEachPixel(pixels, count, [](uint64_t pixel) { return WithBytesSwapped(WithAlphaFirst(pixel)); });
    } else if (change.alphaFirst) {
        ForEachPixel(pixels, count, WithAlphaFirst);
    } else if (change.bigEndian) {
        ForEachPixel(pixels, count, WithBytesSwapped);
    }
}

}  // namespace kvx::gst
