/** Unpacking and packing a range of a sequence of packed samples; nothing is checked. */
#pragma once

#include <cstddef>
#include <cstdint>

#include "KvxFrame/Packing.h"

namespace kvx::frame {

/**
 * Samples `first` to `first` + `count` - 1 of the sequence at `packed`, as words at any address.
 * Reads no byte outside the groups of the range, and none after the last that a sequence ending with it has.
 */
void UnpackRange(Packing packing, const uint8_t* packed, size_t first, size_t count, uint8_t* samples);

/** What becomes of the bits that follow the range in its last byte or group. */
enum class Rest { Kept, Cleared };

/** The reverse. Samples before the range are kept, those that follow as `rest` says. */
void PackRange(Packing packing, const uint8_t* samples, uint8_t* packed, size_t first, size_t count, Rest rest);

}  // namespace kvx::frame
