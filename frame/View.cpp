#include "KvxFrame/View.h"

#include <climits>

#include "frame/Fail.h"
#include "frame/FormatTables.h"

namespace kvx::frame {
namespace {

uint64_t Magnitude(ptrdiff_t stride) {
    return stride < 0 ? -static_cast<uint64_t>(stride) : static_cast<uint64_t>(stride);
}

/** What both kinds of views have in common. `role` is "source" or "destination". */
template <class View>
void ValidateBuffer(const View& view, const char* role) {
    if (!view.data) Fail(KvxResult_NullPointer, "the {} has no data: set the pointer to its first row", role);
    if (view.width == 0 || view.height == 0)
        Fail(KvxResult_InvalidArgument, "the {} is {} x {} pixels: give it a size", role, view.width, view.height);
    const uint64_t rowBytes = RowBytes(view.format, view.width);
    if (view.width > INT_MAX || view.height > INT_MAX || rowBytes > INT_MAX || Magnitude(view.stride) > INT_MAX)
        Fail(KvxResult_InvalidArgument, "the {} is {} x {} pixels with {} bytes from row to row: 2^31 - 1 is the most",
             role, view.width, view.height, view.stride);
    if (view.stride != 0 && Magnitude(view.stride) < rowBytes)
        Fail(KvxResult_InvalidArgument, "the {}'s stride of {} bytes is too short: {} pixels of {} take {}", role,
             view.stride, view.width, Name(view.format), rowBytes);
    const uint64_t needed = ImageBytes(view.format, view.width, view.height, view.stride);
    if (needed > view.capacity)
        Fail(KvxResult_InvalidArgument,
             "the {}'s buffer of {} bytes is too small: {} x {} pixels of {} take {} (check size, stride and format)",
             role, view.capacity, view.width, view.height, Name(view.format), needed);
}

}  // namespace

uint64_t ImageBytes(const Format& format, uint32_t width, uint32_t height, ptrdiff_t stride) {
    if (height == 0) return 0;
    const uint64_t rowBytes = RowBytes(format, width);
    if (stride != 0) return Magnitude(stride) * (height - 1) + rowBytes;
    // Eight rows take as many bytes as one has bits; all bits together would not fit into 64.
    const uint64_t rowBits = RowBits(format, width);
    return height / 8 * rowBits + (height % 8 * rowBits + 7) / 8;
}

void Validate(const SourceView& source) {
    if (!IsSource(source.format))
        Fail(KvxResult_InvalidArgument,
             "{} is no source: frames are mono, Bayer (8 to 16 bits) or TrueSense (8 to 14 bits)", Name(source.format));
    if ((source.horMirrored || source.verMirrored) && source.format.family != Family::TrueSense)
        Fail(KvxResult_InvalidArgument,
             "mirror flags are for TrueSense: a mirrored {} frame is another format, which Mirrored() finds",
             Name(source.format));
    ValidateBuffer(source, "source");
}

void Validate(const DestinationView& destination) {
    if (!IsDestination(destination.format))
        Fail(KvxResult_InvalidArgument, "{} is no destination: pictures are RGB8 to RGB16, BGR8 to BGR16, RGBa8, ...",
             Name(destination.format));
    ValidateBuffer(destination, "destination");
}

}  // namespace kvx::frame
