/** The packings bit by bit, each by a formula of its own: what the library is held against. */
#pragma once

#include <cstdint>
#include <ostream>
#include <random>
#include <vector>

#include "KvxFrame/Packing.h"

namespace kvx::frame {

struct PackingName {
    Packing packing;
    const char* name;
    size_t samples, bytes;  // of a group
};

inline constexpr PackingName kPackingNames[] = {
    {Packing::Pfnc10p, "Pfnc10p", 4, 5},
    {Packing::Pfnc12p, "Pfnc12p", 2, 3},
    {Packing::Pfnc14p, "Pfnc14p", 4, 7},
    {Packing::GigE10Packed, "GigE10Packed", 2, 3},
    {Packing::GigE12Packed, "GigE12Packed", 2, 3},
    {Packing::Mipi10, "Mipi10", 4, 5},
    {Packing::Mipi12, "Mipi12", 2, 3},
    {Packing::Mipi14, "Mipi14", 4, 7},
    {Packing::Msb10, "Msb10", 1, 2},
    {Packing::Msb12, "Msb12", 1, 2},
    {Packing::Msb14, "Msb14", 1, 2},
};

inline void PrintTo(Packing packing, std::ostream* out) {
    *out << kPackingNames[static_cast<size_t>(packing)].name;
}

namespace test {

/** The bit of a sequence (bit n % 8 of byte n / 8) that holds this bit of this sample. */
inline size_t PlaceOf(const PackingName& p, size_t sample, unsigned bit) {
    const unsigned depth = PackedDepth(p.packing), lowBits = depth - 8;
    const size_t inGroup = sample % p.samples, group = sample / p.samples * p.bytes * 8;
    switch (p.packing) {
        case Packing::Pfnc10p:
        case Packing::Pfnc12p:
        case Packing::Pfnc14p:
            return sample * depth + bit;
        case Packing::GigE10Packed:
        case Packing::GigE12Packed:
            return group + (bit < lowBits ? 8 + 4 * inGroup + bit : 16 * inGroup + bit - lowBits);
        case Packing::Mipi10:
        case Packing::Mipi12:
        case Packing::Mipi14:
            return group + (bit < lowBits ? 8 * p.samples + lowBits * inGroup + bit : 8 * inGroup + bit - lowBits);
        default:
            return 16 * sample + 16 - depth + bit;
    }
}

inline bool IsMipi(const PackingName& p) {
    return p.packing >= Packing::Mipi10 && p.packing <= Packing::Mipi14;
}

inline size_t SlowBytes(const PackingName& p, size_t samples) {
    if (IsMipi(p)) return (samples + p.samples - 1) / p.samples * p.bytes;
    return (samples * p.bytes + p.samples - 1) / p.samples;
}

inline void SlowPut(const PackingName& p, uint8_t* packed, size_t sample, unsigned value) {
    for (unsigned bit = 0; bit < PackedDepth(p.packing); ++bit) {
        const size_t place = PlaceOf(p, sample, bit);
        const unsigned byte = packed[place / 8] & ~(1u << place % 8);
        packed[place / 8] = static_cast<uint8_t>(byte | (value >> bit & 1u) << place % 8);
    }
}

template <class T>
std::vector<T> Noise(size_t count, size_t seed) {
    std::mt19937 random(static_cast<uint32_t>(seed));
    std::vector<T> values(count);
    for (T& value : values) value = static_cast<T>(random());
    return values;
}

}  // namespace test
}  // namespace kvx::frame
