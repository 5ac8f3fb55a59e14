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

/** Planes of words for a part of a row, with the bytes that a sink may read behind them. */
constexpr size_t kPlaneBlock = 512;
using PlaneBlock = std::array<std::array<uint16_t, kPlaneBlock + KVX_ROW_PADDING / sizeof(uint16_t)>, kChannels>;

/**
 * Gives pixels to the caller's sink. A mirrored frame keeps its orientation: its pixels are put into their order.
 *
 * @param row,column of the region
 * @param count at most kPlaneBlock
 */
void WriteToSink(const TrueSenseFrame& frame, int row, size_t column, size_t count, PlaneBlock& planes) noexcept;

/**
 * Writes one row of pixels.
 *
 * @param row of the region
 * @param colours red, green and blue of the region's width, of 8 bits for bytes
 * @param shift of words, positive to the left
 */
void StorePixelRow(const TrueSenseFrame& frame, int row, const std::array<const uint16_t*, kChannels>& colours,
                   size_t width, int shift) noexcept;

}  // namespace kvx
