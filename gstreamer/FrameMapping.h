/** Views of GStreamer buffers. */
#pragma once

#include <gst/video/video.h>

#include "KvxFrame/View.h"
#include "gstreamer/Caps.h"

namespace kvx::gst {

/** Maps the memory of a buffer for its own lifetime. */
class MappedBuffer {
public:
    /** @throws frame::Error if the memory cannot be mapped */
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
 * A frame in a buffer. The buffer's GstVideoMeta gives the position of the rows; without one they are `stride` bytes
 * apart; if that is 0, the size of the buffer decides between no padding and padding to a multiple of 4 bytes. The
 * view's capacity is the size of the buffer: Converter::Convert() refuses a frame that does not fit.
 *
 * @throws frame::Error for a GstVideoMeta of another size or that points outside the buffer, and a buffer that is too
 *         large for all of these
 */
frame::SourceView ViewFrame(const MappedBuffer& buffer, const FrameFormat& frame, ptrdiff_t stride);

/** A picture in a buffer: as its GstVideoMeta describes it, otherwise as `info` does. @throws as above */
frame::DestinationView ViewPicture(const MappedBuffer& buffer, const GstVideoInfo& info, const frame::Format& format);

}  // namespace kvx::gst
