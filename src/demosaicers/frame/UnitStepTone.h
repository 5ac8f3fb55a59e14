/** Tone tables of bytes that rise so slowly that vectors can compute them. */
#pragma once

#include <array>
#include <cstdint>

#include "demosaicers/frame/TrueSenseFrame.h"

namespace kvx {

/**
 * The table in 256 runs of 16 entries: the first entry of each run, and at which of the run's entries (bit by bit) the
 * table rises by one. Display curves that end in 8 bits are of this kind.
 */
struct UnitStepTone {
    bool isUsable;  ///< within every run an entry equals the one before or is greater by one
    std::array<uint8_t, 256> first, lowerRises, upperRises;
};

UnitStepTone UnitStepToneOf(const std::array<uint8_t, KVX_TONE_TABLE_SIZE>& table);

/**
 * Looks up and stores as many red, green, blue pixels as there are vectors for.
 * @param indices of the table, 0 to 4095
 * @param pixelStep bytes from pixel to pixel, 3 or 4, negative for backwards; a fourth byte is not written
 * @param dst the first pixel
 * @return the number of pixels stored, at most `count`: 0 where the instruction set has no fast way
 */
size_t StoreUnitStepTones(const std::array<const uint16_t*, kChannels>& indices, const UnitStepTone& tone, size_t count,
                          ptrdiff_t pixelStep, uint8_t* dst);

}  // namespace kvx
