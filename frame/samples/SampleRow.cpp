#include "frame/samples/SampleRow.h"

#include <algorithm>
#include <cstring>

#include "KvxFrame/Packing.h"
#include "frame/packing/SampleRange.h"

namespace kvx::frame {
namespace {

/** Offset of the first byte of a row that starts on a byte. */
template <class View>
ptrdiff_t RowOffset(const View& view, uint32_t row) {
    const ptrdiff_t step = view.stride != 0 ? view.stride : static_cast<ptrdiff_t>(RowBytes(view.format, view.width));
    return static_cast<ptrdiff_t>(row) * step;
}

const uint8_t* RowAt(const SourceView& source, uint32_t row) {
    return static_cast<const uint8_t*>(source.data) + RowOffset(source, row);
}

void ReadWords(const uint8_t* words, uint32_t count, const Format& format, uint16_t* samples) {
    std::memcpy(samples, words, count * sizeof *samples);
    if (format.layout == Layout::BigEndian)
        for (uint32_t i = 0; i < count; ++i) samples[i] = static_cast<uint16_t>(samples[i] << 8 | samples[i] >> 8);
}

void WriteBytes(const uint16_t* samples, uint32_t width, uint8_t* row) {
    for (uint32_t i = 0; i < width; ++i) row[i] = static_cast<uint8_t>(samples[i]);
}

void WriteWords(const uint16_t* samples, uint32_t width, const Format& format, uint8_t* row) {
    const uint32_t low = format.layout == Layout::BigEndian ? 1 : 0;
    for (uint32_t i = 0; i < width; ++i) {
        row[2 * i + low] = static_cast<uint8_t>(samples[i]);
        row[2 * i + 1 - low] = static_cast<uint8_t>(samples[i] >> 8);
    }
}

}  // namespace

bool IsSequence(const Format& format, ptrdiff_t stride) {
    return stride == 0 && PackingOf(format) && format.layout != Layout::Mipi;
}

void ReadSamples(const SourceView& source, uint32_t row, uint32_t column, uint32_t count, uint16_t* samples) {
    const Format& format = source.format;
    if (const std::optional<Packing> packing = PackingOf(format)) {
        // A row that begins within a byte is a range of one long sequence.
        const bool isSequence = IsSequence(format, source.stride);
        const auto* packed = isSequence ? static_cast<const uint8_t*>(source.data) : RowAt(source, row);
        const size_t first = (isSequence ? size_t{row} * source.width : 0) + column;
        UnpackRange(*packing, packed, first, count, reinterpret_cast<uint8_t*>(samples));
    } else if (format.bits == 8) {
        std::copy_n(RowAt(source, row) + column, count, samples);
    } else {
        ReadWords(RowAt(source, row) + size_t{column} * sizeof *samples, count, format, samples);
    }
}

const uint16_t* WordsInPlace(const SourceView& source, uint32_t row, uint32_t column) {
    if (source.format.layout != Layout::Plain || source.format.bits == 8) return nullptr;
    const uint8_t* const words = RowAt(source, row) + size_t{column} * sizeof(uint16_t);
    const bool isAligned = reinterpret_cast<uintptr_t>(words) % alignof(uint16_t) == 0;
    return isAligned ? reinterpret_cast<const uint16_t*>(words) : nullptr;
}

void WriteRow(const DestinationView& frame, uint32_t row, const uint16_t* samples) {
    const Format& format = frame.format;
    auto* const start = static_cast<uint8_t*>(frame.data);
    if (const std::optional<Packing> packing = PackingOf(format)) {
        const bool isSequence = IsSequence(format, frame.stride);
        PackRange(*packing, reinterpret_cast<const uint8_t*>(samples),
                  isSequence ? start : start + RowOffset(frame, row), isSequence ? size_t{row} * frame.width : 0,
                  frame.width, Rest::Cleared);
    } else if (format.bits == 8) {
        WriteBytes(samples, frame.width, start + RowOffset(frame, row));
    } else {
        WriteWords(samples, frame.width, format, start + RowOffset(frame, row));
    }
}

char StoredFilterAt(const SourceView& source, uint32_t row, uint32_t column) {
    // Below zero the numbers wrap around by 2^32, a multiple of every tile.
    return FilterAt(source.format, source.verMirrored ? source.height - 1 - row : row,
                    source.horMirrored ? source.width - 1 - column : column);
}

}  // namespace kvx::frame
