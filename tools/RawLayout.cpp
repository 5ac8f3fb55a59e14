#include "tools/RawLayout.h"

#include <climits>
#include <cstring>

#include "tools/ToolError.h"

namespace kvx::tool {
namespace {

/** Bytes of a pixel in the widest picture that a frame can become: three 16-bit samples. */
constexpr uint64_t kMaximumPixelBytes = 6;

uint64_t RowBytes(const RawLayout& layout) {
    return layout.width * BytesPerSample(*layout.format);
}

/** Samples of the other width, bytes for words or words for bytes, are the commonest mistake. */
bool IsSizeWith(uint64_t bytesPerSample, const RawLayout& layout, uint64_t actual) {
    return actual == layout.skipBytes + layout.width * layout.height * bytesPerSample;
}

/** How to get along with a file that is too long. */
std::string AdviceToShorten(const RawLayout& layout, uint64_t actual, uint64_t needed) {
    if (BytesPerSample(*layout.format) == 1 && IsSizeWith(2, layout, actual)) {
        return "two bytes per pixel are there: give a --format of 10 to 16 bits";
    }
    const uint64_t rest = actual - layout.skipBytes;
    std::string advice = fmt::format("for a header add --skip-bytes {}", layout.skipBytes + actual - needed);
    if (rest % layout.stride == 0) {
        advice += fmt::format(", for more rows --height {}", rest / layout.stride);
    }
    if (rest % layout.height == 0) {
        advice += fmt::format(", for padded rows --stride {}", rest / layout.height);
    }
    return advice;
}

/** How to get along with a file that is too short. */
std::string AdviceToLengthen(const RawLayout& layout, uint64_t actual) {
    if (BytesPerSample(*layout.format) == 2 && IsSizeWith(1, layout, actual)) {
        return "one byte per pixel is there: give an 8-bit --format";
    }
    const uint64_t rest = actual - layout.skipBytes;
    const bool isWholeRows = rest > 0 && rest % layout.stride == 0;
    return isWholeRows ? fmt::format("--height {} fits, if the width is right", rest / layout.stride)
                       : "check --width, --height and --format";
}

void CheckContentSize(uint64_t actual, const RawLayout& layout, const std::string& name) {
    const uint64_t whole = layout.skipBytes + layout.stride * layout.height;
    const uint64_t needed = whole - layout.stride + RowBytes(layout);
    if (actual == needed || actual == whole) {
        return;
    }
    const std::string behind =
        layout.skipBytes == 0 ? std::string() : fmt::format(" behind {} bytes", layout.skipBytes);
    Fail(ExitCode::Frame, "{}: holds {} bytes, but {}x{} pixels of {} with {} bytes per row{} need {}: {}", name,
         actual, layout.width, layout.height, layout.format->name, layout.stride, behind, needed,
         actual < needed ? AdviceToLengthen(layout, actual) : AdviceToShorten(layout, actual, needed));
}

/** Afterwards no sum or product of the layout's numbers overflows. */
void CheckLayout(const RawLayout& layout, uint64_t actual, const std::string& name) {
    CheckFrameSize(layout.width, layout.height, name);
    if (layout.stride < RowBytes(layout) || layout.stride > INT_MAX) {
        Fail(ExitCode::Frame, "{}: --stride {} does not suit rows of {} {} pixels: give {} to {} bytes", name,
             layout.stride, layout.width, layout.format->name, RowBytes(layout), INT_MAX);
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
    CheckContentSize(content.size(), layout, name);
    const int type = BytesPerSample(*layout.format) == 2 ? CV_16UC1 : CV_8UC1;
    RawFrame frame{layout.format, cv::Mat(static_cast<int>(layout.height), static_cast<int>(layout.width), type)};
    for (int row = 0; row < frame.samples.rows; ++row) {
        const uint8_t* start = content.data() + layout.skipBytes + row * layout.stride;
        std::memcpy(frame.samples.ptr(row), start, RowBytes(layout));
    }
    return frame;
}

}  // namespace kvx::tool
