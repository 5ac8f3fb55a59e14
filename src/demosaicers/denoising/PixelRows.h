/** Finished colours go to the destination. */
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "demosaicers/frame/TrueSenseFrame.h"

namespace kvx {

/**
 * Writes one row of pixels.
 *
 * @param row of the region
 * @param colours red, green and blue of the region's width, of 8 bits for bytes and 12 bits for words
 * @param shift of words, positive to the left
 */
void StorePixelRow(const TrueSenseDestination& to, int row, const std::array<const uint16_t*, kChannels>& colours,
                   size_t width, int shift) noexcept;

}  // namespace kvx
