/** Pixels in memory, whatever their order, step and sample size. */
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "demosaicers/frame/TrueSenseFrame.h"

namespace kvx {

/** Stores pixels [begin, end) of a row at `row`; `valueAt(channel, i)` gives their samples in the order of memory. */
template <class Value, class ValueAt>
void StorePixels(size_t begin, size_t end, ptrdiff_t pixelStep, uint8_t* row, const ValueAt& valueAt) {
    uint8_t* pixel = row + static_cast<ptrdiff_t>(begin) * pixelStep;
    for (size_t i = begin; i < end; ++i, pixel += pixelStep)
        for (int channel = 0; channel < kChannels; ++channel) {
            const auto value = static_cast<Value>(valueAt(channel, i));
            std::memcpy(pixel + channel * sizeof value, &value, sizeof value);
        }
}

/**
 * Writes one row of pixels.
 *
 * @param row of the region
 * @param colours red, green and blue of the region's width, of 8 bits for bytes
 * @param shift of words, positive to the left
 */
void StorePixelRow(const TrueSenseDestination& to, int row, const std::array<const uint16_t*, kChannels>& colours,
                   size_t width, int shift) noexcept;

}  // namespace kvx
