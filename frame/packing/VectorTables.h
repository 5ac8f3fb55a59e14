/** Tables of the vector forms, derived from the table of layouts at compile time. */
#pragma once

#include <array>

#include "frame/packing/GroupLayout.h"

namespace kvx::frame {

inline constexpr size_t kVectorSamples = 8;  // 16 bytes of samples
inline constexpr uint8_t kNone = 0x80;       // as an index: a zero byte

using ByteIndices = std::array<uint8_t, 16>;
using Words = std::array<uint16_t, kVectorSamples>;

/** Bytes of eight samples. */
constexpr size_t VectorBytes(const GroupLayout& layout) {
    return kVectorSamples / layout.samples * layout.bytes;
}

/**
 * Unpacking: sample = (A * scaleA | (B * scaleB >> 16 & maskB)) >> shift, where A and B are words of looked-up bytes.
 *
 *  - Sample in one piece: A is the byte in which it ends and the one before, shifted up until its highest bit is the
 *    word's. A third byte, the lowest, comes from B.
 *  - Highest bits apart: A is their byte, as the word's high byte. B is the byte in which the low bits end and the one
 *    before, shifted down until the highest of them is bit 7.
 */
struct UnpackTable {
    ByteIndices a{}, b{};
    Words scaleA{}, scaleB{};
    uint16_t maskB = 0;
    int shift = 0;
    size_t vectorBytes = 0;
};

constexpr UnpackTable UnpackTableOf(const GroupLayout& layout) {
    UnpackTable table;
    table.maskB = layout.highApart ? 0x00FF : 0xFFFF;
    table.shift = 16 - layout.depth;
    table.vectorBytes = VectorBytes(layout);
    for (size_t i = 0; i < kVectorSamples; ++i) {
        const size_t sample = i % layout.samples, group = i / layout.samples * layout.bytes;
        const size_t lastBit = layout.low[sample] + layout.LowBits() - 1;
        const size_t last = lastBit / 8, bitsInLast = lastBit % 8 + 1;
        const auto index = [group](size_t byte) { return static_cast<uint8_t>(group + byte); };
        const uint8_t beforeLast = last > 0 ? index(last - 1) : kNone;
        if (layout.highApart) {
            table.a[2 * i] = kNone;
            table.a[2 * i + 1] = index(layout.high[sample]);
            table.scaleA[i] = 1;
            table.b[2 * i] = beforeLast;
            table.b[2 * i + 1] = index(last);
            table.scaleB[i] = static_cast<uint16_t>(1u << (16 - bitsInLast));
        } else {
            const bool threeBytes = last - layout.low[sample] / 8u == 2;
            table.a[2 * i] = beforeLast;
            table.a[2 * i + 1] = index(last);
            table.b[2 * i] = kNone;
            table.b[2 * i + 1] = threeBytes ? index(last - 2) : kNone;
            table.scaleA[i] = table.scaleB[i] = static_cast<uint16_t>(1u << (8 - bitsInLast));
        }
    }
    return table;
}

/**
 * Packing: A = (sample & maskA) * scaleA, the low bits where they belong in two bytes; B = (sample & maskB) * scaleB
 * >> 16, the third byte of a sample in one piece, or the highest bits that are apart. The packed bytes are bytes of A
 * and B, or'ed: up to four samples meet in a byte of A.
 */
struct PackTable {
    uint16_t maskA = 0, maskB = 0;
    Words scaleA{}, scaleB{};
    std::array<ByteIndices, 4> a{};
    ByteIndices b{};
    size_t vectorBytes = 0;
};

constexpr PackTable PackTableOf(const GroupLayout& layout) {
    PackTable table;
    table.maskA = layout.LowMask();
    table.maskB = layout.SampleMask();
    table.vectorBytes = VectorBytes(layout);
    for (ByteIndices& indices : table.a)
        for (uint8_t& index : indices) index = kNone;
    for (uint8_t& index : table.b) index = kNone;
    const auto addFromA = [&table](size_t packedByte, size_t wordByte) {
        for (ByteIndices& indices : table.a) {
            if (indices[packedByte] != kNone) continue;
            indices[packedByte] = static_cast<uint8_t>(wordByte);
            return;
        }
    };
    for (size_t i = 0; i < kVectorSamples; ++i) {
        const size_t sample = i % layout.samples, group = i / layout.samples * layout.bytes;
        const size_t first = layout.low[sample] / 8, bit = layout.low[sample] % 8, end = bit + layout.LowBits();
        table.scaleA[i] = static_cast<uint16_t>(1u << bit);
        addFromA(group + first, 2 * i);
        if (end > 8) addFromA(group + first + 1, 2 * i + 1);
        if (layout.highApart) {
            table.scaleB[i] = static_cast<uint16_t>(1u << (16 - layout.LowBits()));
            table.b[group + layout.high[sample]] = static_cast<uint8_t>(2 * i);
        } else {
            table.scaleB[i] = table.scaleA[i];
            if (end > 16) table.b[group + first + 2] = static_cast<uint8_t>(2 * i);
        }
    }
    return table;
}

}  // namespace kvx::frame
