#include "tools/RawFrame.h"

#include <bit>
#include <cstring>

namespace kvx::tool {

static_assert(std::endian::native == std::endian::little, "words go to and come from raw files as they are in memory");

namespace {

/** Exchanges the bytes of `count` words, also in place. */
void SwapBytes(const uint8_t* words, size_t count, uint8_t* swapped) {
    for (size_t index = 0; index < 2 * count; index += 2) {
        const uint8_t low = words[index];
        swapped[index] = words[index + 1];
        swapped[index + 1] = low;
    }
}

int TypeOf(const frame::Format& format) {
    return format.bits > 8 ? CV_16UC1 : CV_8UC1;
}

}  // namespace

frame::SourceView ViewOf(const RawFrame& frame) {
    const cv::Mat& samples = frame.samples;
    return {.data = samples.data,
            .width = static_cast<uint32_t>(samples.cols),
            .height = static_cast<uint32_t>(samples.rows),
            .stride = static_cast<ptrdiff_t>(samples.step),
            .capacity = samples.step * (samples.rows - 1) + samples.cols * samples.elemSize(),
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
    const std::optional<frame::Packing> packing = frame::PackingOf(format);
    if (!packing) {
        Bytes content = EncodeRaw(samples);
        if (format.layout == frame::Layout::BigEndian) {
            SwapBytes(content.data(), content.size() / 2, content.data());
        }
        return content;
    }
    const frame::PackedImage image{*packing, static_cast<uint32_t>(samples.cols), static_cast<uint32_t>(samples.rows),
                                   padding};
    Bytes content(frame::PackedImageBytes(image));
    frame::PackImage(image, samples.data, static_cast<ptrdiff_t>(samples.step), content.data(), content.size());
    return content;
}

RawFrame UnpackFrame(const frame::SourceView& packed) {
    RawFrame frame{frame::Unpacked(packed.format),
                   cv::Mat(static_cast<int>(packed.height), static_cast<int>(packed.width), TypeOf(packed.format))};
    cv::Mat& samples = frame.samples;
    if (const std::optional<frame::Packing> packing = frame::PackingOf(packed.format)) {
        const frame::PackedImage image{*packing, packed.width, packed.height,
                                       packed.stride == 0 ? frame::RowPadding::Image : frame::RowPadding::Line,
                                       static_cast<size_t>(packed.stride)};
        frame::UnpackImage(image, packed.data, packed.capacity, samples.data, static_cast<ptrdiff_t>(samples.step));
        return frame;
    }
    const size_t rowBytes = samples.cols * samples.elemSize();
    const ptrdiff_t stride = packed.stride == 0 ? static_cast<ptrdiff_t>(rowBytes) : packed.stride;
    for (int row = 0; row < samples.rows; ++row) {
        const uint8_t* start = static_cast<const uint8_t*>(packed.data) + row * stride;
        if (packed.format.layout == frame::Layout::BigEndian) {
            SwapBytes(start, packed.width, samples.ptr(row));
        } else {
            std::memcpy(samples.ptr(row), start, rowBytes);
        }
    }
    return frame;
}

}  // namespace kvx::tool
