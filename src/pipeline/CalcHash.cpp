#include <bit>
#include <cstddef>

#include "KvxDemosaicing/KvxPipeline.h"

uint32_t calcHash(const void* data, int32_t rowBytes, int32_t rows, uint32_t seed) noexcept {
    const auto* bytes = static_cast<const uint8_t*>(data);
    uint32_t hash = seed;
    for (int32_t row = 0; row < rows; ++row)
        for (int32_t i = 0; i < rowBytes; ++i) hash = std::rotl(hash, 5) ^ *bytes++;
    return hash;
}
