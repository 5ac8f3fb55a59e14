#include "frame/packing/SampleRange.h"

#include <algorithm>
#include <cstring>

#include "frame/packing/GroupLayout.h"
#include "frame/packing/VectorForm.h"

namespace kvx::frame {
namespace {

uint64_t LoadGroup(const uint8_t* bytes, size_t count) {
    uint64_t group = 0;
    for (size_t i = 0; i < count; ++i) group |= uint64_t{bytes[i]} << 8 * i;
    return group;
}

void StoreGroup(uint64_t group, uint8_t* bytes, size_t count) {
    for (size_t i = 0; i < count; ++i) bytes[i] = static_cast<uint8_t>(group >> 8 * i);
}

/** Samples `from` to `to` - 1 of one group. */
void UnpackGroup(const GroupLayout& layout, const uint8_t* packed, size_t from, size_t to, uint8_t* samples) {
    const uint64_t group = LoadGroup(packed, layout.BytesOf(to));
    for (size_t i = from; i < to; ++i) {
        const uint16_t sample = layout.Get(group, i);
        std::memcpy(samples + 2 * (i - from), &sample, sizeof sample);
    }
}

void PackGroup(const GroupLayout& layout, const uint8_t* samples, uint8_t* packed, size_t from, size_t to, Rest rest) {
    const bool whole = from == 0 && to == layout.samples;
    const size_t keptSamples = rest == Rest::Kept && !whole ? to : from;
    uint64_t group = LoadGroup(packed, layout.BytesOf(keptSamples));
    for (size_t i = from; i < to; ++i) {
        uint16_t sample = 0;
        std::memcpy(&sample, samples + 2 * (i - from), sizeof sample);
        group = layout.Put(group, i, sample);
    }
    StoreGroup(group, packed, layout.BytesOf(to));
}

/**
 * Splits a range at the borders of groups. `vectors(group's byte, samples, bytes)` may do whole groups and returns the
 * number of samples it did; `part(group's byte, from, to, offset in the range)` does the rest, group by group.
 */
template <class Vectors, class Part>
void ForEachPart(const GroupLayout& layout, size_t first, size_t count, const Vectors& vectors, const Part& part) {
    size_t offset = 0;
    size_t byte = first / layout.samples * layout.bytes;
    if (const size_t from = first % layout.samples; from > 0 && count > 0) {
        const size_t to = std::min<size_t>(layout.samples, from + count);
        part(byte, from, to, offset);
        offset = to - from;
        byte += layout.bytes;
    }
    const size_t done = vectors(byte, offset, (count - offset) / layout.samples * layout.samples);
    offset += done;
    byte += done / layout.samples * layout.bytes;
    for (; offset < count; byte += layout.bytes) {
        const size_t to = std::min<size_t>(layout.samples, count - offset);
        part(byte, 0, to, offset);
        offset += to;
    }
}

}  // namespace

void UnpackRange(Packing packing, const uint8_t* packed, size_t first, size_t count, uint8_t* samples) {
    const GroupLayout& layout = LayoutOf(packing);
    ForEachPart(
        layout, first, count,
        [&](size_t byte, size_t offset, size_t whole) {
            return UnpackVectors(packing, packed + byte, layout.BytesOfSequence(whole), samples + 2 * offset, whole);
        },
        [&](size_t byte, size_t from, size_t to, size_t offset) {
            UnpackGroup(layout, packed + byte, from, to, samples + 2 * offset);
        });
}

void PackRange(Packing packing, const uint8_t* samples, uint8_t* packed, size_t first, size_t count, Rest rest) {
    const GroupLayout& layout = LayoutOf(packing);
    ForEachPart(
        layout, first, count,
        [&](size_t byte, size_t offset, size_t whole) {
            return PackVectors(packing, samples + 2 * offset, whole, packed + byte, layout.BytesOfSequence(whole));
        },
        [&](size_t byte, size_t from, size_t to, size_t offset) {
            PackGroup(layout, samples + 2 * offset, packed + byte, from, to, rest);
        });
}

}  // namespace kvx::frame
