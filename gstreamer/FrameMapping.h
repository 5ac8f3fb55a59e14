/** Buffers of GStreamer as views of the frame layer. */
#pragma once

#include <gst/video/video.h>

#include "KvxFrame/View.h"
#include "gstreamer/Caps.h"

namespace kvx::gst {

/** The memory of a buffer, while this lives. */
class MappedBuffer {
public:
    /** @throws frame::Error where the memory cannot be had */
    MappedBuffer(GstBuffer* buffer, GstMapFlags flags);
    ~MappedBuffer();
    MappedBuffer(const MappedBuffer&) = delete;
    MappedBuffer& operator=(const MappedBuffer&) = delete;

    /** The buffer's GstVideoMeta, or null. */
    const GstVideoMeta* VideoMeta() const;
    uint8_t* Data() const {
        return m_info.data;
    }
    size_t Size() const {
        return m_info.size;
    }

private:
    GstBuffer* m_buffer;
    GstMapInfo m_info;
};

/**
 * A frame in a buffer. Its rows are where the buffer's GstVideoMeta says, else `stride` bytes apart, else, with a
 * stride of 0, as the size of the buffer tells: without padding, or padded to a multiple of 4 bytes. The view's
 * capacity is what the buffer has: Converter::Convert() refuses a frame that does not fit.
 *
 * @throws frame::Error for a GstVideoMeta that leaves the buffer
 */
frame::SourceView ViewFrame(const MappedBuffer& buffer, const FrameFormat& frame, ptrdiff_t stride);

/** A picture in a buffer: where its GstVideoMeta says, else as `info` has it. @throws as above */
frame::DestinationView ViewPicture(const MappedBuffer& buffer, const GstVideoInfo& info, const frame::Format& format);

}  // namespace kvx::gst
