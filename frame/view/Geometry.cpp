#include "KvxFrame/Geometry.h"

#include "frame/base/Fail.h"
#include "frame/formats/FormatTables.h"

namespace kvx::frame {
namespace {

/** The phase of the pixel `rows` below and `columns` to the right of the first. */
uint8_t MovedPhase(const Format& format, uint32_t rows, uint32_t columns) {
    const uint32_t side = TileSide(format);
    return static_cast<uint8_t>((format.phase / side + rows) % side * side + (format.phase % side + columns) % side);
}

template <class View>
View CutOut(const View& view, const _KvxRect& region) {
    Validate(view);
    if (region.width == 0 || region.height == 0 || uint64_t{region.x} + region.width > view.width ||
        uint64_t{region.y} + region.height > view.height)
        Fail(KvxResult_InvalidArgument, "the region {} x {} at ({}, {}) is not inside {} x {} pixels", region.width,
             region.height, region.x, region.y, view.width, view.height);
    if (view.stride == 0 && RowBits(view.format, view.width) % 8 != 0)
        Fail(KvxResult_InvalidArgument, "rows of this {} frame begin within bytes: unpack it before cropping",
             Name(view.format));
    // A pixel of a packed row begins a byte where the pixels before it fill theirs.
    const bool isMipi = view.format.layout == Layout::Mipi;
    const uint32_t unit = isMipi ? (view.format.bits == 12 ? 2 : 4) : 1;
    const uint64_t bits = RowBits(view.format, region.x);
    if (region.x % unit != 0 || bits % 8 != 0 || (view.format.layout == Layout::GigE && region.x % 2 != 0))
        Fail(KvxResult_InvalidArgument, "column {} of a {} frame begins within bytes: crop at a multiple of 4",
             region.x, Name(view.format));

    View cut = view;
    cut.stride = view.stride != 0 ? view.stride : static_cast<ptrdiff_t>(RowBytes(view.format, view.width));
    const ptrdiff_t offset = static_cast<ptrdiff_t>(region.y) * cut.stride + static_cast<ptrdiff_t>(bits / 8);
    using Byte = std::conditional_t<std::is_same_v<View, SourceView>, const uint8_t, uint8_t>;
    cut.data = static_cast<Byte*>(view.data) + offset;
    cut.width = region.width;
    cut.height = region.height;
    // Exactly the bytes of the region: only the whole view knows the end of the buffer.
    cut.capacity = static_cast<size_t>(ImageBytes(cut.format, cut.width, cut.height, cut.stride));
    return cut;
}

template <class View>
View UpsideDown(const View& view) {
    View flipped = CutOut(view, {0, 0, view.width, view.height});
    using Byte = std::conditional_t<std::is_same_v<View, SourceView>, const uint8_t, uint8_t>;
    flipped.data = static_cast<Byte*>(flipped.data) + static_cast<ptrdiff_t>(view.height - 1) * flipped.stride;
    flipped.stride = -flipped.stride;
    return flipped;
}

}  // namespace

SourceView Crop(const SourceView& source, const _KvxRect& region) {
    SourceView cut = CutOut(source, region);
    // The format of a mirrored frame counts from the other end.
    const uint32_t rows = source.verMirrored ? source.height - region.y - region.height : region.y;
    const uint32_t columns = source.horMirrored ? source.width - region.x - region.width : region.x;
    cut.format.phase = MovedPhase(source.format, rows, columns);
    return cut;
}

DestinationView Crop(const DestinationView& destination, const _KvxRect& region) {
    return CutOut(destination, region);
}

SourceView Mirrored(const SourceView& source, bool horizontally, bool vertically) {
    Validate(source);
    SourceView mirrored = source;
    if (source.format.family == Family::Bayer) {
        mirrored.format.phase =
            MovedPhase(source.format, vertically ? source.height - 1 : 0, horizontally ? source.width - 1 : 0);
    } else if (source.format.family == Family::TrueSense) {
        mirrored.horMirrored = source.horMirrored != horizontally;
        mirrored.verMirrored = source.verMirrored != vertically;
        if (mirrored.horMirrored && mirrored.verMirrored) {
            // Turned by half a turn the base tile is itself two rows and two columns on, so that the site at (r, c) of
            // it has the filter of (5 - r, 5 - c).
            mirrored.horMirrored = mirrored.verMirrored = false;
            const uint32_t row = source.format.phase / 4 + source.height - 1;
            const uint32_t column = source.format.phase % 4 + source.width - 1;
            mirrored.format.phase = static_cast<uint8_t>((5 - row % 4) % 4 * 4 + (5 - column % 4) % 4);
        }
    }
    return mirrored;
}

SourceView FlippedVertically(const SourceView& source) {
    return Mirrored(UpsideDown(source), false, true);
}

DestinationView FlippedVertically(const DestinationView& destination) {
    return UpsideDown(destination);
}

}  // namespace kvx::frame
