/** Where the bits of packed samples are: the one table behind sizes, plain form and vector form. */
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>

#include "KvxFrame/Packing.h"

namespace kvx::frame {

/**
 * The smallest piece of a layout that starts at a byte: `samples` samples in `bytes` bytes.
 *
 * The low bits of a sample are consecutive, from bit `low` of the group up; bit n of a group is bit n % 8 of byte n
 * / 8. They are the whole sample, unless its eight highest bits are a byte of their own (`highApart`): byte `high`.
 */
struct GroupLayout {
    Layout layout;
    uint8_t depth, samples, bytes;
    bool highApart;
    bool wholeGroups;  // a last group that lacks samples takes as many bytes as any other
    std::array<uint8_t, 4> low, high;

    constexpr unsigned LowBits() const {
        return highApart ? depth - 8u : depth;
    }
    constexpr uint16_t SampleMask() const {
        return static_cast<uint16_t>((1u << depth) - 1);
    }
    constexpr uint16_t LowMask() const {
        return static_cast<uint16_t>((1u << LowBits()) - 1);
    }
    /** Bytes of a group with its first `count` samples, 0 to `samples` of them. */
    constexpr size_t BytesOf(size_t count) const {
        if (count == 0) return 0;
        if (wholeGroups) return bytes;
        const size_t last = count - 1;
        const size_t end = (low[last] + LowBits() + 7) / 8;
        return highApart ? std::max<size_t>(end, high[last] + 1) : end;
    }
    /** Bytes of `count` samples that start with a group. */
    constexpr uint64_t BytesOfSequence(uint64_t count) const {
        return count / samples * bytes + BytesOf(count % samples);
    }

    constexpr uint16_t Get(uint64_t group, size_t sample) const {
        const uint64_t lowPart = group >> low[sample] & LowMask();
        const uint64_t highPart = highApart ? (group >> 8 * high[sample] & 0xFF) << LowBits() : 0;
        return static_cast<uint16_t>(lowPart | highPart);
    }
    /** `group` with `value`, cut to the depth, as this sample. */
    constexpr uint64_t Put(uint64_t group, size_t sample, uint16_t value) const {
        group = (group & ~(uint64_t{LowMask()} << low[sample])) | (uint64_t{value} & LowMask()) << low[sample];
        if (!highApart) return group;
        const uint64_t highPart = value >> LowBits() & 0xFF;
        return (group & ~(uint64_t{0xFF} << 8 * high[sample])) | highPart << 8 * high[sample];
    }
};

inline constexpr GroupLayout kGroupLayouts[] = {
    // layout, depth, samples, bytes, high byte apart, whole groups, lowest bit of each sample, byte with its eight
    // highest bits
    {Layout::Pfnc, 10, 4, 5, false, false, {0, 10, 20, 30}, {}},           // Pfnc10p
    {Layout::Pfnc, 12, 2, 3, false, false, {0, 12}, {}},                   // Pfnc12p
    {Layout::Pfnc, 14, 4, 7, false, false, {0, 14, 28, 42}, {}},           // Pfnc14p
    {Layout::GigE, 10, 2, 3, true, false, {8, 12}, {0, 2}},                // GigE10Packed
    {Layout::GigE, 12, 2, 3, true, false, {8, 12}, {0, 2}},                // GigE12Packed
    {Layout::Mipi, 10, 4, 5, true, true, {32, 34, 36, 38}, {0, 1, 2, 3}},  // Mipi10
    {Layout::Mipi, 12, 2, 3, true, true, {16, 20}, {0, 1}},                // Mipi12
    {Layout::Mipi, 14, 4, 7, true, true, {32, 38, 44, 50}, {0, 1, 2, 3}},  // Mipi14
    {Layout::MsbAligned, 10, 1, 2, true, false, {6}, {1}},                 // Msb10
    {Layout::MsbAligned, 12, 1, 2, true, false, {4}, {1}},                 // Msb12
    {Layout::MsbAligned, 14, 1, 2, true, false, {2}, {1}},                 // Msb14
};
inline constexpr size_t kPackings = std::size(kGroupLayouts);

/** Each bit of each sample has a bit of the group to itself, and whole vectors of eight samples are whole groups. */
constexpr bool BitsAreDisjoint(const GroupLayout& layout) {
    uint64_t taken = 0;
    for (size_t sample = 0; sample < layout.samples; ++sample) {
        const uint64_t bits = layout.Put(0, sample, 0xFFFF);
        if ((taken & bits) != 0 || bits >> 8 * layout.bytes != 0) return false;
        if (layout.Get(bits, sample) != layout.SampleMask()) return false;
        taken |= bits;
    }
    return 8 % layout.samples == 0;
}
static_assert(std::all_of(std::begin(kGroupLayouts), std::end(kGroupLayouts), BitsAreDisjoint));

constexpr bool IsPacking(Packing packing) {
    return static_cast<size_t>(packing) < kPackings;
}

constexpr const GroupLayout& LayoutOf(Packing packing) {
    return kGroupLayouts[static_cast<size_t>(packing)];
}

}  // namespace kvx::frame
