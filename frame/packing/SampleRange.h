/** Unpacks and packs a range of a sequence of packed samples, without checks. */
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

/** Treatment of the bits after the range in its last byte or group. */
enum class Rest { Kept, Cleared };

/** The reverse. Samples before the range keep their values; `rest` says whether those after it do. */
void PackRange(Packing packing, const uint8_t* samples, uint8_t* packed, size_t first, size_t count, Rest rest);

}  // namespace kvx::frame
