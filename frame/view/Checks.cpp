#include "frame/view/Checks.h"

#include <climits>
#include <utility>

#include "KvxFrame/Converter.h"
#include "frame/base/Fail.h"

namespace kvx::frame {
namespace {

/** Checks that both kinds of views share. `role` is "source" or "destination". */
template <class View>
void CheckView(const View& view, const char* role) {
    if (!view.data) Fail(KvxResult_NullPointer, "the {} has no data: set the pointer to its first row", role);
    if (view.width == 0 || view.height == 0)
        Fail(KvxResult_InvalidArgument, "the {} is {} x {} pixels: give it a size", role, view.width, view.height);
    const uint64_t rowBytes = RowBytes(view.format, view.width);
    if (view.width > INT_MAX || view.height > INT_MAX || rowBytes > INT_MAX || StrideMagnitude(view.stride) > INT_MAX)
        Fail(KvxResult_InvalidArgument, "the {} is {} x {} pixels with {} bytes from row to row: 2^31 - 1 is the most",
             role, view.width, view.height, view.stride);
    if (view.stride != 0 && StrideMagnitude(view.stride) < rowBytes)
        Fail(KvxResult_InvalidArgument, "the {}'s stride of {} bytes is too short: {} pixels of {} take {}", role,
             view.stride, view.width, Name(view.format), rowBytes);
    const uint64_t needed = ImageBytes(view.format, view.width, view.height, view.stride);
    if (needed > view.capacity)
        Fail(KvxResult_InvalidArgument,
             "the {}'s buffer of {} bytes is too small: {} x {} pixels of {} take {} (check size, stride and format)",
             role, view.capacity, view.width, view.height, Name(view.format), needed);
}

/** The addresses from the first byte of the lowest row to the last byte of a row. */
template <class View>
std::pair<uintptr_t, uintptr_t> Extent(const View& view) {
    const auto top = reinterpret_cast<uintptr_t>(view.data);
    const uintptr_t first = view.stride < 0 ? top + (view.height - 1) * static_cast<uintptr_t>(view.stride) : top;
    return {first, first + ImageBytes(view.format, view.width, view.height, view.stride)};
}

template <class View>
void CheckFrameView(const View& view) {
    if (!IsValid(view.format) || view.format.family == Family::Colour)
        Fail(KvxResult_InvalidArgument, "{} is no format of frames: these are mono, Bayer or TrueSense",
             Name(view.format));
    CheckView(view, "frame");
}

}  // namespace

uint64_t StrideMagnitude(ptrdiff_t stride) {
    return stride < 0 ? -static_cast<uint64_t>(stride) : static_cast<uint64_t>(stride);
}

void CheckBuffer(const SourceView& view, const char* role) {
    CheckView(view, role);
}

void CheckBuffer(const DestinationView& view, const char* role) {
    CheckView(view, role);
}

void CheckFrame(const SourceView& view) {
    CheckFrameView(view);
}

void CheckFrame(const DestinationView& view) {
    CheckFrameView(view);
}

void CheckSameSize(const SourceView& source, const DestinationView& destination) {
    if (source.width != destination.width || source.height != destination.height)
        Fail(KvxResult_InvalidArgument, "the source has {} x {} pixels, the destination {} x {}: make them equal",
             source.width, source.height, destination.width, destination.height);
}

void CheckApart(const SourceView& source, const DestinationView& destination) {
    const auto [sourceBegin, sourceEnd] = Extent(source);
    const auto [destinationBegin, destinationEnd] = Extent(destination);
    if (sourceBegin < destinationEnd && destinationBegin < sourceEnd)
        Fail(KvxResult_InvalidArgument, "source and destination share memory: convert into another buffer");
}

void CheckThreads(int count) {
    if (count < 0 || count > kMaxThreads)
        Fail(KvxResult_OutOfRange, "{} threads: give 1 to {}, or 0 for OpenMP's setting", count, kMaxThreads);
}

}  // namespace kvx::frame
