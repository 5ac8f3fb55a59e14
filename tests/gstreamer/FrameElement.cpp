#include "gstreamer/FrameElement.h"

#include <gtest/gtest.h>

namespace kvx::test {

FrameElement::FrameElement(const std::string& properties) : m_bus(gst_bus_new()) {
    GstElement* element = gst_parse_launch(("kvxdemosaic " + properties).c_str(), nullptr);
    m_harness = gst_harness_new_with_element(element, "sink", "src");
    gst_object_unref(element);
    gst_element_set_bus(Element(), m_bus);
}

FrameElement::~FrameElement() {
    gst_element_set_bus(Element(), nullptr);
    gst_object_unref(m_bus);
    gst_harness_teardown(m_harness);
}

void FrameElement::SetCaps(const std::string& frames, const std::string& pictures) {
    gst_harness_set_caps_str(m_harness, frames.c_str(), pictures.c_str());
}

void FrameElement::SetCaps(const frame::SourceView& frame, const char* pictureFormat, const char* frameFormat) {
    SetCaps(FrameCaps(frameFormat ? frameFormat : frame::Name(frame.format), frame.width, frame.height),
            std::string("video/x-raw,format=") + pictureFormat);
}

GstFlowReturn FrameElement::Push(Buffer buffer) {
    return gst_harness_push(m_harness, buffer.release());
}

Buffer FrameElement::Convert(Buffer buffer) {
    Push(std::move(buffer));
    return Buffer(gst_harness_try_pull(m_harness));
}

std::string FrameElement::Error() {
    std::string sentence;
    while (GstMessage* message = gst_bus_pop_filtered(m_bus, GST_MESSAGE_ERROR)) {
        GError* error = nullptr;
        gst_message_parse_error(message, &error, nullptr);
        sentence = error->message;
        g_error_free(error);
        gst_message_unref(message);
    }
    return sentence;
}

Buffer MakeBuffer(const std::vector<uint8_t>& bytes) {
    if (bytes.empty()) return Buffer(gst_buffer_new());
    auto* copy = static_cast<guint8*>(g_memdup2(bytes.data(), bytes.size()));
    return Buffer(gst_buffer_new_wrapped(copy, bytes.size()));
}

std::string Text(const GstCaps* caps) {
    gchar* text = gst_caps_to_string(caps);
    std::string result = text;
    g_free(text);
    return result;
}

std::string FrameCaps(const std::string& format, uint32_t width, uint32_t height) {
    std::string name = format;
    const frame::Format known = frame::FormatByName(format);
    for (const frame::FormatName& other : frame::NamesOf(known))
        if (other.scheme == frame::Scheme::GStreamer) name = other.name;
    const char* media = known.family == frame::Family::Bayer ? "video/x-bayer" : "video/x-kvx-truesense";
    return fmt::format("{},format={},width={},height={},framerate=25/1", media, name, width, height);
}

std::vector<uint16_t> Samples(GstBuffer* buffer, const char* format, uint32_t width, uint32_t height) {
    GstVideoInfo info;
    gst_video_info_set_format(&info, gst_video_format_from_string(format), width, height);
    GstVideoFrame frame;
    EXPECT_TRUE(gst_video_frame_map(&frame, &info, buffer, GST_MAP_READ));
    const bool isWide = GST_VIDEO_FRAME_COMP_DEPTH(&frame, 0) == 16;
    const int high = info.finfo->flags & GST_VIDEO_FORMAT_FLAG_LE ? 1 : 0;
    std::vector<uint16_t> samples;
    for (uint32_t row = 0; row < height; ++row)
        for (uint32_t column = 0; column < width; ++column)
            for (uint32_t component = 0; component < GST_VIDEO_FRAME_N_COMPONENTS(&frame); ++component) {
                const uint8_t* at = static_cast<uint8_t*>(GST_VIDEO_FRAME_COMP_DATA(&frame, component)) +
                                    static_cast<ptrdiff_t>(row) * GST_VIDEO_FRAME_COMP_STRIDE(&frame, component) +
                                    column * GST_VIDEO_FRAME_COMP_PSTRIDE(&frame, component);
                samples.push_back(static_cast<uint16_t>(isWide ? at[high] << 8 | at[1 - high] : at[0]));
            }
    gst_video_frame_unmap(&frame);
    return samples;
}

std::vector<uint16_t> ExpectedSamples(const frame::SourceView& source, const char* format,
                                      const frame::Options& options) {
    const GstVideoFormatInfo* info = gst_video_format_get_info(gst_video_format_from_string(format));
    const bool isWide = GST_VIDEO_FORMAT_INFO_DEPTH(info, 0) == 16;
    const frame::Format rgba = frame::FormatByName(isWide ? "RGBA64_LE" : "RGBA");
    std::vector<uint8_t> bytes(frame::ImageBytes(rgba, source.width, source.height, 0));
    frame::Convert(source, {bytes.data(), source.width, source.height, 0, bytes.size(), rgba}, options);
    std::vector<uint16_t> samples;
    for (size_t index = 0; index < bytes.size() / (isWide ? 2 : 1); ++index) {
        if (index % 4 == 3 && !GST_VIDEO_FORMAT_INFO_HAS_ALPHA(info)) continue;
        samples.push_back(static_cast<uint16_t>(isWide ? bytes[2 * index] | bytes[2 * index + 1] << 8 : bytes[index]));
    }
    return samples;
}

}  // namespace kvx::test
