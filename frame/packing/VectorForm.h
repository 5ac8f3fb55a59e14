/** Unpacking and packing by vectors of eight samples, for whatever instruction set the processor has. */
#pragma once

#include <cstddef>
#include <cstdint>

#include "KvxFrame/Packing.h"

namespace kvx::frame {

/**
 * Converts samples from the start of a group on, as far as whole vectors reach.
 *
 * @param packed all `packedBytes` of them may be read, or written with something that is not final: what the samples
 *               returned as done do not cover
 * @param samples words at any address
 * @return the number of samples done, a multiple of eight
 */
size_t UnpackVectors(Packing packing, const uint8_t* packed, size_t packedBytes, uint8_t* samples, size_t count);
size_t PackVectors(Packing packing, const uint8_t* samples, size_t count, uint8_t* packed, size_t packedBytes);

}  // namespace kvx::frame
