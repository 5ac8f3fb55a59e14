/** The element on its own: frames in, pictures out, what it says about failures. */
#pragma once

#include <fmt/format.h>
#include <gst/check/gstharness.h>
#include <gst/video/video.h>

#include <memory>
#include <string>
#include <vector>

#include "frame/TestFrames.h"

namespace kvx::test {

struct Unref {
    void operator()(GstBuffer* buffer) const {
        gst_buffer_unref(buffer);
    }
    void operator()(GstCaps* caps) const {
        gst_caps_unref(caps);
    }
};
using Buffer = std::unique_ptr<GstBuffer, Unref>;
using Caps = std::unique_ptr<GstCaps, Unref>;

class FrameElement {
public:
    /** @param properties as gst-launch-1.0 has them, for example "algorithm=ipp n-threads=2" */
    explicit FrameElement(const std::string& properties = "");
    ~FrameElement();
    FrameElement(const FrameElement&) = delete;
    FrameElement& operator=(const FrameElement&) = delete;

    /** Caps from now on. */
    void SetCaps(const std::string& frames, const std::string& pictures);
    void SetCaps(const frame::SourceView& frame, const char* pictureFormat, const char* frameFormat = nullptr);

    GstFlowReturn Push(Buffer buffer);
    /** The picture of a frame, or null, or what the element made last where there is more. */
    Buffer Convert(Buffer buffer);
    /** The last error's sentence since the last call, or "". */
    std::string Error();

    GstHarness* Harness() {
        return m_harness;
    }
    GstElement* Element() {
        return m_harness->element;
    }

private:
    GstHarness* m_harness;
    GstBus* m_bus;
};

/** A buffer of exactly these bytes, on the heap, where memory checkers see each byte beside them. */
Buffer MakeBuffer(const std::vector<uint8_t>& bytes);

std::string Text(const GstCaps* caps);

/** Caps of frames: the format by any name, in GStreamer's words. */
std::string FrameCaps(const std::string& format, uint32_t width, uint32_t height);

/** Red, green, blue and alpha (where there is) of all pixels, of 8 or 16 bits, read as GStreamer describes a format. */
std::vector<uint16_t> Samples(GstBuffer* buffer, const char* format, uint32_t width, uint32_t height);

/** The same by the frame layer, without GStreamer. */
std::vector<uint16_t> ExpectedSamples(const frame::SourceView& source, const char* format,
                                      const frame::Options& options = {});

}  // namespace kvx::test
