/** Unpacks and packs with vectors of eight samples, for the processor's instruction set. */
#pragma once

#include <cstddef>
#include <cstdint>

#include "KvxFrame/Packing.h"

namespace kvx::frame {

/**
 * Converts samples from the start of a group, as many as fill whole vectors.
 *
 * @param packed all `packedBytes` of them may be read, or written with something that is not final: what the samples
 *               returned as done do not cover
 * @param samples words at any address
 * @return the number of samples done, a multiple of eight
 */
size_t UnpackVectors(Packing packing, const uint8_t* packed, size_t packedBytes, uint8_t* samples, size_t count);
size_t PackVectors(Packing packing, const uint8_t* samples, size_t count, uint8_t* packed, size_t packedBytes);

}  // namespace kvx::frame
