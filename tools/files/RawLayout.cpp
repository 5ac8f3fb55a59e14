#include "tools/files/RawLayout.h"

#include <fmt/ranges.h>

#include <algorithm>
#include <climits>
#include <string>
#include <vector>

#include "KvxFrame/Relayout.h"
#include "tools/ToolError.h"

namespace kvx::tool {
namespace {

/** Read at once: enough for the disk, and little enough for the cache. */
constexpr uint64_t kPartBytes = 1u << 20;

/** Bytes of a pixel in the widest converted picture: three 16-bit samples. */
constexpr uint64_t kMaximumPixelBytes = 6;

uint64_t RowBytes(const RawLayout& layout) {
    return frame::RowBytes(layout.format, static_cast<uint32_t>(layout.width));
}

uint64_t Stride(const RawLayout& layout) {
    return layout.stride.value_or(RowBytes(layout));
}

/** From the start of a frame to that of the next one in a file with several. */
uint64_t FrameBytes(const RawLayout& layout) {
    return Stride(layout) * layout.height;
}

/** Bytes of the frame when its rows follow each other without a gap, even within bytes. */
uint64_t DenseBytes(const RawLayout& layout, const frame::Format& format) {
    return frame::ImageBytes(format, static_cast<uint32_t>(layout.width), static_cast<uint32_t>(layout.height), 0);
}

/** A format of the same mosaic, with samples in another layout or of another width, that has the size of the file. */
std::optional<std::string> FittingFormat(const RawLayout& layout, uint64_t actual) {
    for (const frame::Format& other : frame::AllFormats()) {
        const bool isSameMosaic = other.family == layout.format.family && other.phase == layout.format.phase;
        if (isSameMosaic && (other.bits == layout.format.bits || other.layout == frame::Layout::Plain) &&
            actual == layout.skipBytes + DenseBytes(layout, other)) {
            return fmt::format("the size is that of {}: give another --format", frame::Name(other));
        }
    }
    return std::nullopt;
}

/** The stride with which the rows fill the file, if there is one. */
std::optional<uint64_t> FittingStride(const RawLayout& layout, uint64_t actual) {
    const uint64_t rest = actual - layout.skipBytes;
    const uint64_t stride = rest / layout.height;
    const bool fits = rest % layout.height == 0 && stride >= RowBytes(layout) && stride <= INT_MAX;
    return fits ? std::optional(stride) : std::nullopt;
}

/** What makes a file of the wrong size fit, as far as its size shows. */
std::string Advice(const RawLayout& layout, uint64_t actual, uint64_t needed) {
    const uint64_t rest = actual - layout.skipBytes;
    if (rest == RowBytes(layout) * layout.height || rest == DenseBytes(layout, layout.format)) {
        return "its rows have no padding: leave out --stride";
    }
    if (const std::optional<std::string> format = FittingFormat(layout, actual)) {
        return *format;
    }
    std::vector<std::string> options;
    if (rest >= 2 * FrameBytes(layout) && rest % FrameBytes(layout) == 0) {
        options.push_back(fmt::format("--frame 0 ({} frames)", rest / FrameBytes(layout)));
    }
    if (actual > needed) {
        options.push_back(fmt::format("--skip-bytes {} (a header)", layout.skipBytes + actual - needed));
    }
    if (rest > 0 && rest % Stride(layout) == 0) {
        options.push_back(
            fmt::format("--height {} ({} rows)", rest / Stride(layout), actual > needed ? "more" : "fewer"));
    }
    if (const std::optional<uint64_t> stride = FittingStride(layout, actual)) {
        options.push_back(fmt::format("--stride {} (padded rows)", *stride));
    }
    return options.empty() ? "check --width, --height and --format"
                           : fmt::format("try {}", fmt::join(options, ", or "));
}

void CheckContentSize(uint64_t actual, const RawLayout& layout, const std::string& name) {
    const uint64_t whole = layout.skipBytes + Stride(layout) * layout.height;
    const uint64_t needed = whole - Stride(layout) + RowBytes(layout);
    if (actual == needed || actual == whole) {
        return;
    }
    const std::string after = layout.skipBytes == 0 ? std::string() : fmt::format(" after {} bytes", layout.skipBytes);
    Fail(ExitCode::Frame, "{}: holds {} bytes, but {}x{} pixels of {} with {} bytes per row{} need {}: {}", name,
         actual, layout.width, layout.height, frame::Name(layout.format), Stride(layout), after, needed,
         Advice(layout, actual, needed));
}

/** After this check, no sum or product of the layout's numbers overflows. */
void CheckLayout(const RawLayout& layout, uint64_t actual, const std::string& name) {
    CheckFrameSize(layout.width, layout.height, name);
    if (layout.skipBytes > actual) {
        Fail(ExitCode::Frame, "{}: holds {} bytes, fewer than --skip-bytes {}: give a smaller number", name, actual,
             layout.skipBytes);
    }
    if (Stride(layout) < RowBytes(layout) || Stride(layout) > INT_MAX) {
        Fail(ExitCode::Frame, "{}: --stride {} does not fit: a row of {} {} pixels takes {} bytes; try --stride {}",
             name, Stride(layout), layout.width, frame::Name(layout.format), RowBytes(layout),
             FittingStride(layout, actual).value_or(RowBytes(layout)));
    }
}

/** The frame that starts at a byte of the file. Dense rows share bytes, so that only all of them can be unpacked. */
RawFrame ReadRows(const InputFile& file, const RawLayout& layout, uint64_t start, bool isDense) {
    const uint64_t stride = Stride(layout);
    const uint64_t partRows = isDense ? layout.height : std::clamp<uint64_t>(kPartBytes / stride, 1, layout.height);
    RawFrame frame =
        MakeRawFrame(layout.format, cv::Size(static_cast<int>(layout.width), static_cast<int>(layout.height)));
    for (uint64_t top = 0; top < layout.height; top += partRows) {
        const uint64_t rows = std::min(partRows, layout.height - top);
        const Bytes part = file.Part(start + top * stride, rows * stride);
        RawFrame target{frame.format, frame.samples.rowRange(static_cast<int>(top), static_cast<int>(top + rows))};
        frame::Relayout({.data = part.data(),
                         .width = static_cast<uint32_t>(layout.width),
                         .height = static_cast<uint32_t>(rows),
                         .stride = isDense ? 0 : static_cast<ptrdiff_t>(stride),
                         .capacity = part.size(),
                         .format = layout.format},
                        DestinationOf(target));
    }
    return frame;
}

}  // namespace

void CheckFrameSize(uint64_t width, uint64_t height, const std::string& name) {
    if (width == 0 || height == 0) {
        Fail(ExitCode::Frame, "{}: {}x{} pixels are not a frame: --width and --height must be at least 1", name, width,
             height);
    }
    if (width > INT_MAX / kMaximumPixelBytes || height > INT_MAX / width) {
        Fail(ExitCode::Frame, "{}: {}x{} pixels are too many: at most {} pixels, {} in a row", name, width, height,
             INT_MAX, INT_MAX / kMaximumPixelBytes);
    }
}

uint64_t FrameCount(const RawLayout& layout, uint64_t fileBytes, const std::string& name) {
    CheckLayout(layout, fileBytes, name);
    const uint64_t rest = fileBytes - layout.skipBytes;
    if (rest == 0 || rest % FrameBytes(layout) != 0) {
        Fail(ExitCode::Frame,
             "{}: holds {} bytes after --skip-bytes {}: no whole number of frames, which have {} bytes", name, rest,
             layout.skipBytes, FrameBytes(layout));
    }
    return rest / FrameBytes(layout);
}

RawFrame CutFrame(const InputFile& file, const RawLayout& layout, const std::string& name) {
    CheckLayout(layout, file.Size(), name);
    // If both kinds of rows of a small frame take the same number of bytes, they start with a byte.
    const bool isDense = !layout.stride && file.Size() == layout.skipBytes + DenseBytes(layout, layout.format) &&
                         file.Size() != layout.skipBytes + RowBytes(layout) * layout.height;
    if (!isDense) {
        CheckContentSize(file.Size(), layout, name);
    }
    return ReadRows(file, layout, layout.skipBytes, isDense);
}

RawFrame CutFrame(const InputFile& file, const RawLayout& layout, uint64_t index) {
    return ReadRows(file, layout, layout.skipBytes + index * FrameBytes(layout), false);
}

}  // namespace kvx::tool
