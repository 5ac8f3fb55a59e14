#include "KvxFrame/View.h"

#include "frame/base/Fail.h"
#include "frame/formats/FormatTables.h"
#include "frame/view/Checks.h"

namespace kvx::frame {
uint64_t ImageBytes(const Format& format, uint32_t width, uint32_t height, ptrdiff_t stride) {
    if (height == 0) return 0;
    const uint64_t rowBytes = RowBytes(format, width);
    if (stride != 0) return StrideMagnitude(stride) * (height - 1) + rowBytes;
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
    CheckBuffer(source, "source");
}

void Validate(const DestinationView& destination) {
    if (!IsDestination(destination.format))
        Fail(KvxResult_InvalidArgument, "{} is no destination: pictures are RGB8 to RGB16, BGR8 to BGR16, RGBa8, ...",
             Name(destination.format));
    CheckBuffer(destination, "destination");
}

}  // namespace kvx::frame
