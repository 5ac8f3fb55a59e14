#include "frame/SampleRow.h"

#include <algorithm>
#include <cstring>

#include "KvxFrame/Packing.h"
#include "frame/FormatTables.h"

namespace kvx::frame {
namespace {

/** First byte of a row that begins with one. */
const uint8_t* RowAt(const SourceView& source, uint32_t row) {
    const ptrdiff_t step =
        source.stride != 0 ? source.stride : static_cast<ptrdiff_t>(RowBytes(source.format, source.width));
    return static_cast<const uint8_t*>(source.data) + static_cast<ptrdiff_t>(row) * step;
}

void ReadWords(const uint8_t* row, uint32_t width, const Format& format, uint16_t* samples) {
    std::memcpy(samples, row, width * sizeof *samples);
    if (format.layout == Layout::BigEndian)
        for (uint32_t i = 0; i < width; ++i) samples[i] = static_cast<uint16_t>(samples[i] << 8 | samples[i] >> 8);
}

}  // namespace

void ReadRow(const SourceView& source, uint32_t row, uint16_t* samples) {
    const Format& format = source.format;
    if (const std::optional<Packing> packing = PackingOf(format)) {
        // A row that begins within a byte is a range of one long sequence.
        const bool isSequence = source.stride == 0 && format.layout != Layout::Mipi;
        const auto* packed = isSequence ? static_cast<const uint8_t*>(source.data) : RowAt(source, row);
        const size_t first = isSequence ? size_t{row} * source.width : 0;
        UnpackSamples(*packing, packed, PackedBytes(*packing, first + source.width), first, source.width, samples);
    } else if (format.bits == 8) {
        std::copy_n(RowAt(source, row), source.width, samples);
    } else {
        ReadWords(RowAt(source, row), source.width, format, samples);
    }
}

char StoredFilterAt(const SourceView& source, uint32_t row, uint32_t column) {
    // Below zero the numbers wrap around by 2^32, a multiple of every tile.
    return FilterAt(source.format, source.verMirrored ? source.height - 1 - row : row,
                    source.horMirrored ? source.width - 1 - column : column);
}

}  // namespace kvx::frame
