#include "tools/files/RawLayout.h"

#include <climits>

#include "tools/ToolError.h"

namespace kvx::tool {
namespace {

/** Bytes of a pixel in the widest picture that a frame can become: three 16-bit samples. */
constexpr uint64_t kMaximumPixelBytes = 6;

uint64_t RowBytes(const RawLayout& layout) {
    return frame::RowBytes(layout.format, static_cast<uint32_t>(layout.width));
}

uint64_t Stride(const RawLayout& layout) {
    return layout.stride.value_or(RowBytes(layout));
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

/** How to get along with a file that is too long. */
std::string AdviceToShorten(const RawLayout& layout, uint64_t actual, uint64_t needed) {
    const uint64_t rest = actual - layout.skipBytes;
    std::string advice = fmt::format("for a header add --skip-bytes {}", layout.skipBytes + actual - needed);
    if (rest % Stride(layout) == 0) {
        advice += fmt::format(", for more rows --height {}", rest / Stride(layout));
    }
    if (rest % layout.height == 0) {
        advice += fmt::format(", for padded rows --stride {}", rest / layout.height);
    }
    return advice;
}

/** How to get along with a file that is too short. */
std::string AdviceToLengthen(const RawLayout& layout, uint64_t actual) {
    const uint64_t rest = actual - layout.skipBytes;
    const bool isWholeRows = rest > 0 && rest % Stride(layout) == 0;
    return isWholeRows ? fmt::format("--height {} fits, if the width is right", rest / Stride(layout))
                       : "check --width, --height and --format";
}

void CheckContentSize(uint64_t actual, const RawLayout& layout, const std::string& name) {
    const uint64_t whole = layout.skipBytes + Stride(layout) * layout.height;
    const uint64_t needed = whole - Stride(layout) + RowBytes(layout);
    if (actual == needed || actual == whole) {
        return;
    }
    const std::string behind =
        layout.skipBytes == 0 ? std::string() : fmt::format(" behind {} bytes", layout.skipBytes);
    const std::string advice =
        FittingFormat(layout, actual)
            .value_or(actual < needed ? AdviceToLengthen(layout, actual) : AdviceToShorten(layout, actual, needed));
    Fail(ExitCode::Frame, "{}: holds {} bytes, but {}x{} pixels of {} with {} bytes per row{} need {}: {}", name,
         actual, layout.width, layout.height, frame::Name(layout.format), Stride(layout), behind, needed, advice);
}

/** Afterwards no sum or product of the layout's numbers overflows. */
void CheckLayout(const RawLayout& layout, uint64_t actual, const std::string& name) {
    CheckFrameSize(layout.width, layout.height, name);
    if (Stride(layout) < RowBytes(layout) || Stride(layout) > INT_MAX) {
        Fail(ExitCode::Frame, "{}: --stride {} does not suit rows of {} {} pixels: give {} to {} bytes", name,
             Stride(layout), layout.width, frame::Name(layout.format), RowBytes(layout), INT_MAX);
    }
    if (layout.skipBytes > actual) {
        Fail(ExitCode::Frame, "{}: holds {} bytes, fewer than --skip-bytes {}: give a smaller number", name, actual,
             layout.skipBytes);
    }
}

}  // namespace

void CheckFrameSize(uint64_t width, uint64_t height, const std::string& name) {
    if (width == 0 || height == 0) {
        Fail(ExitCode::Frame, "{}: {}x{} pixels are no frame: --width and --height start at 1", name, width, height);
    }
    if (width > INT_MAX / kMaximumPixelBytes || height > INT_MAX / width) {
        Fail(ExitCode::Frame, "{}: {}x{} pixels are more than a conversion takes: at most {} pixels, {} in a row", name,
             width, height, INT_MAX, INT_MAX / kMaximumPixelBytes);
    }
}

RawFrame CutFrame(const Bytes& content, const RawLayout& layout, const std::string& name) {
    CheckLayout(layout, content.size(), name);
    // Of a small frame both kinds of rows can take the same number of bytes: then they start with a byte.
    const bool isDense = !layout.stride && content.size() == layout.skipBytes + DenseBytes(layout, layout.format) &&
                         content.size() != layout.skipBytes + RowBytes(layout) * layout.height;
    if (!isDense) {
        CheckContentSize(content.size(), layout, name);
    }
    return UnpackFrame({.data = content.data() + layout.skipBytes,
                        .width = static_cast<uint32_t>(layout.width),
                        .height = static_cast<uint32_t>(layout.height),
                        .stride = isDense ? 0 : static_cast<ptrdiff_t>(Stride(layout)),
                        .capacity = content.size() - layout.skipBytes,
                        .format = layout.format});
}

}  // namespace kvx::tool
