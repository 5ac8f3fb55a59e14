#include "tools/files/RawFrame.h"

#include <bit>
#include <cstring>

#include "KvxFrame/Relayout.h"

namespace kvx::tool {

static_assert(std::endian::native == std::endian::little, "words go to and come from raw files as they are in memory");

namespace {

size_t BytesOf(const cv::Mat& samples) {
    return samples.step * (samples.rows - 1) + samples.cols * samples.elemSize();
}

}  // namespace

RawFrame MakeRawFrame(const frame::Format& format, cv::Size size) {
    return {frame::Unpacked(format), cv::Mat(size, format.bits > 8 ? CV_16UC1 : CV_8UC1)};
}

frame::SourceView ViewOf(const cv::Mat& samples, const frame::Format& format) {
    return {.data = samples.data,
            .width = static_cast<uint32_t>(samples.cols),
            .height = static_cast<uint32_t>(samples.rows),
            .stride = static_cast<ptrdiff_t>(samples.step),
            .capacity = BytesOf(samples),
            .format = format};
}

frame::SourceView ViewOf(const RawFrame& frame) {
    return ViewOf(frame.samples, frame.format);
}

frame::DestinationView DestinationOf(RawFrame& frame) {
    const cv::Mat& samples = frame.samples;
    return {.data = samples.data,
            .width = static_cast<uint32_t>(samples.cols),
            .height = static_cast<uint32_t>(samples.rows),
            .stride = static_cast<ptrdiff_t>(samples.step),
            .capacity = BytesOf(samples),
            .format = frame.format};
}

Bytes EncodeRaw(const cv::Mat& samples) {
    const size_t rowBytes = samples.cols * samples.elemSize();
    Bytes content(rowBytes * samples.rows);
    for (int row = 0; row < samples.rows; ++row) {
        std::memcpy(content.data() + row * rowBytes, samples.ptr(row), rowBytes);
    }
    return content;
}

Bytes EncodePacked(const cv::Mat& samples, const frame::Format& format, frame::RowPadding padding) {
    const auto width = static_cast<uint32_t>(samples.cols), height = static_cast<uint32_t>(samples.rows);
    const bool isSequence = padding == frame::RowPadding::Image;
    const ptrdiff_t stride = isSequence ? 0 : static_cast<ptrdiff_t>(frame::RowBytes(format, width));
    Bytes content(frame::ImageBytes(format, width, height, stride));
    frame::Relayout(ViewOf(samples, frame::Unpacked(format)),
                    {content.data(), width, height, stride, content.size(), format});
    return content;
}

RawFrame UnpackFrame(const frame::SourceView& packed) {
    RawFrame frame =
        MakeRawFrame(packed.format, cv::Size(static_cast<int>(packed.width), static_cast<int>(packed.height)));
    frame::Relayout(packed, DestinationOf(frame));
    return frame;
}

}  // namespace kvx::tool
