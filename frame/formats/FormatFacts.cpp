// What follows from a format's fields: sizes, tiles, what can be converted.
#include <array>

#include "frame/formats/FormatTables.h"

namespace kvx::frame {
namespace {

bool LayoutFits(const Format& format) {
    if (format.layout == Layout::Plain) return true;
    if (format.family == Family::Colour || format.bits == 8) return false;
    if (format.bits == 16) return format.layout == Layout::BigEndian;
    return format.layout != Layout::GigE || format.bits <= 12;
}

/** Pixels with a fourth sample have 8 or 16 bits, those with a filler 8. */
bool OrderFits(const Format& format) {
    switch (format.order) {
        case Order::Rgb:
        case Order::Bgr:
            return true;
        case Order::Rgba:
        case Order::Bgra:
            return format.family == Family::Colour && (format.bits == 8 || format.bits == 16);
        case Order::Rgbx:
        case Order::Bgrx:
            return format.family == Family::Colour && format.bits == 8;
    }
    return false;
}

uint64_t BitsOfSample(const Format& format) {
    switch (format.layout) {
        case Layout::Pfnc:
        case Layout::Mipi:
            return format.bits;
        case Layout::GigE:
            return 12;
        default:
            return format.bits > 8 ? 16 : 8;
    }
}

}  // namespace

bool IsValid(const Format& format) {
    if (format.bits < 8 || format.bits > 16 || format.bits % 2 != 0) return false;
    if (format.family > Family::Colour || format.layout > Layout::Mipi) return false;
    if (format.family != Family::Colour && format.order != Order::Rgb) return false;
    return format.phase < TileSide(format) * TileSide(format) && LayoutFits(format) && OrderFits(format);
}

bool IsSource(const Format& format) {
    return IsValid(format) && format.family != Family::Colour &&
           !(format.family == Family::TrueSense && format.bits == 16);
}

bool IsDestination(const Format& format) {
    return IsValid(format) && format.family == Family::Colour;
}

Format WithBits(Format format, uint8_t bits) {
    format.bits = bits;
    if (bits == 8) format.layout = Layout::Plain;
    return format;
}

Format Unpacked(Format format) {
    format.layout = Layout::Plain;
    return format;
}

uint32_t TileSide(const Format& format) {
    switch (format.family) {
        case Family::Bayer:
            return 2;
        case Family::TrueSense:
            return 4;
        default:
            return 1;
    }
}

char FilterAt(const Format& format, uint32_t row, uint32_t column) {
    const uint32_t side = TileSide(format);
    row = (row + format.phase / side) % side;
    column = (column + format.phase % side) % side;
    switch (format.family) {
        case Family::Bayer:
            return "RGGB"[2 * row + column];
        case Family::TrueSense:
            return "WBWGBWGWWGWRGWRW"[4 * row + column];
        default:
            return 'Y';
    }
}

size_t FilterIndex(const Format& format, uint32_t row, uint32_t column) {
    const char filter = FilterAt(format, row, column);
    if (format.family == Family::Bayer && filter == 'G') return FilterAt(format, row, column ^ 1) == 'R' ? 1 : 2;
    if (format.family == Family::Bayer) return filter == 'R' ? 0 : 3;
    return filter == 'R' ? 0 : filter == 'G' ? 1 : filter == 'B' ? 2 : 3;
}

uint32_t SamplesPerPixel(const Format& format) {
    if (format.family != Family::Colour) return 1;
    return format.order == Order::Rgb || format.order == Order::Bgr ? 3 : 4;
}

uint64_t RowBits(const Format& format, uint32_t width) {
    if (format.layout != Layout::Mipi) return uint64_t{width} * SamplesPerPixel(format) * BitsOfSample(format);
    const uint32_t samples = format.bits == 12 ? 2 : 4;  // rows are whole groups
    return (uint64_t{width} + samples - 1) / samples * samples * format.bits;
}

uint64_t RowBytes(const Format& format, uint32_t width) {
    return (RowBits(format, width) + 7) / 8;
}

}  // namespace kvx::frame
