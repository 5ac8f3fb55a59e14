#include "gstreamer/FrameMapping.h"

#include "frame/base/Fail.h"

namespace kvx::gst {
using frame::Fail;

namespace {

/** Position of the first row and stride. */
struct Rows {
    size_t offset = 0;
    ptrdiff_t stride = 0;
};

template <class View>
View MakeView(const MappedBuffer& buffer, const frame::Format& format, uint32_t width, uint32_t height, Rows rows) {
    // With a negative stride the first row has the highest address.
    const uint64_t above = rows.stride < 0 ? static_cast<uint64_t>(-rows.stride) * (height - 1) : 0;
    if (rows.offset > buffer.Size() || above > rows.offset) {
        Fail(KvxResult_InvalidArgument,
             "the buffer's GstVideoMeta puts {} rows, {} bytes apart, at byte {} of a buffer of {} bytes", height,
             rows.stride, rows.offset, buffer.Size());
    }
    View view;
    view.data = buffer.Data() + rows.offset;
    view.width = width;
    view.height = height;
    view.stride = rows.stride;
    view.capacity = buffer.Size() - (rows.offset - above);
    view.format = format;
    return view;
}

/**
 * Derives the stride from the size of the buffer; a buffer that is too small counts as without padding.
 * @throws frame::Error for a buffer with another row or more: these are other frames than the caps say
 */
ptrdiff_t FindStride(size_t size, const FrameFormat& frame) {
    const auto bytesWith = [&](uint64_t stride) {
        return frame::ImageBytes(frame.format, frame.width, frame.height, static_cast<ptrdiff_t>(stride));
    };
    constexpr ptrdiff_t kNoPadding = 0;  // rows of packed samples may then begin within a byte
    const uint64_t rowBytes = frame::RowBytes(frame.format, frame.width);
    const uint64_t padded = (rowBytes + 3) / 4 * 4;
    if (size == bytesWith(kNoPadding) &&
        size != rowBytes * frame.height) {  // small frames may fit both: whole bytes win
        return kNoPadding;
    }
    if (size >= padded * (uint64_t{frame.height} + 1)) {
        Fail(KvxResult_InvalidArgument,
             "the caps contradict the buffer: {} x {} pixels of {} take {} bytes, but it has {}: check width, height "
             "and "
             "format, or set stride",
             frame.width, frame.height, frame::Name(frame.format), bytesWith(rowBytes), size);
    }
    if (size != rowBytes * frame.height && size >= bytesWith(padded)) {
        return static_cast<ptrdiff_t>(padded);
    }
    return size >= bytesWith(rowBytes) ? static_cast<ptrdiff_t>(rowBytes) : kNoPadding;
}

}  // namespace

MappedBuffer::MappedBuffer(GstBuffer* buffer, GstMapFlags flags) : m_buffer(buffer) {
    if (!gst_buffer_map(buffer, &m_info, flags)) {
        Fail(KvxResult_InvalidArgument, "the memory of a buffer cannot be mapped");
    }
}

MappedBuffer::~MappedBuffer() {
    gst_buffer_unmap(m_buffer, &m_info);
}

const GstVideoMeta* MappedBuffer::VideoMeta() const {
    const GstVideoMeta* meta = gst_buffer_get_video_meta(m_buffer);
    return meta && meta->n_planes > 0 && meta->stride[0] != 0 ? meta : nullptr;
}

frame::SourceView ViewFrame(const MappedBuffer& buffer, const FrameFormat& frame, ptrdiff_t stride) {
    Rows rows;
    if (const GstVideoMeta* meta = buffer.VideoMeta()) {
        if (meta->width != frame.width || meta->height != frame.height) {
            Fail(KvxResult_InvalidArgument,
                 "the caps contradict the buffer: {} x {} pixels, but its GstVideoMeta has {} x {}", frame.width,
                 frame.height, meta->width, meta->height);
        }
        rows = {meta->offset[0], meta->stride[0]};
    } else {
        rows.stride = stride != 0 ? stride : FindStride(buffer.Size(), frame);
    }
    return MakeView<frame::SourceView>(buffer, frame.format, frame.width, frame.height, rows);
}

frame::DestinationView ViewPicture(const MappedBuffer& buffer, const GstVideoInfo& info, const frame::Format& format) {
    Rows rows = {GST_VIDEO_INFO_PLANE_OFFSET(&info, 0), GST_VIDEO_INFO_PLANE_STRIDE(&info, 0)};
    if (const GstVideoMeta* meta = buffer.VideoMeta()) {
        rows = {meta->offset[0], meta->stride[0]};
    }
    return MakeView<frame::DestinationView>(buffer, format, static_cast<uint32_t>(info.width),
                                            static_cast<uint32_t>(info.height), rows);
}

}  // namespace kvx::gst
