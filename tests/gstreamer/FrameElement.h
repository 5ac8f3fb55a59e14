/** The element on its own: frames in, pictures out, what it says about failures. */
#pragma once

#include <fmt/format.h>
#include <gst/check/gstharness.h>
#include <gst/video/video.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "frame/support/TestFrames.h"

namespace kvx::test {

struct Unref {
    template <class Object>
    void operator()(Object* object) const {
        gst_mini_object_unref(GST_MINI_OBJECT_CAST(object));
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
    void SetCaps(const std::string& frameFormat, const frame::SourceView& frame, const char* pictureFormat);
    void Set(const char* property, const char* value);

    GstFlowReturn Push(Buffer buffer);
    /** The buffer's picture has the samples that the frame layer gives the frame. */
    void ExpectPicture(Buffer buffer, const frame::SourceView& frame, const frame::Options& options = {});
    /** The buffer is refused with a sentence that says this. */
    void ExpectError(Buffer buffer, const std::string& part, GstFlowReturn flow = GST_FLOW_ERROR);
    /** The sentence of the last message of this kind, which names no folder of the build; "" if there is none. */
    std::string TakeMessage(GstMessageType type = GST_MESSAGE_ERROR);

    GstHarness* Harness() {
        return m_harness;
    }

private:
    GstHarness* m_harness;
    GstBus* m_bus;
};

/** A buffer of exactly these bytes, on the heap, where memory checkers see each byte beside them. */
Buffer MakeBuffer(const std::vector<uint8_t>& bytes);

/** Red, green and blue of all pixels, of 8 or 16 bits, read as GStreamer describes the format; alpha must be opaque. */
std::vector<uint16_t> Samples(GstBuffer* buffer, const GstVideoInfo& info);

}  // namespace kvx::test
