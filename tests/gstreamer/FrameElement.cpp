#include "gstreamer/FrameElement.h"

namespace kvx::test {
namespace {

/** By the frame layer, without GStreamer. */
std::vector<uint16_t> ExpectedSamples(const frame::SourceView& source, bool isWide, const frame::Options& options) {
    const frame::Format rgb = frame::FormatByName(isWide ? "RGB16" : "RGB8");
    std::vector<uint8_t> bytes(frame::ImageBytes(rgb, source.width, source.height, 0));
    frame::Convert(source, {bytes.data(), source.width, source.height, 0, bytes.size(), rgb}, options);
    if (!isWide) return {bytes.begin(), bytes.end()};
    std::vector<uint16_t> samples(bytes.size() / 2);
    std::memcpy(samples.data(), bytes.data(), bytes.size());
    return samples;
}

}  // namespace

FrameElement::FrameElement(const std::string& properties) : m_bus(gst_bus_new()) {
    GstElement* element = gst_parse_launch(("kvxdemosaic " + properties).c_str(), nullptr);
    m_harness = gst_harness_new_with_element(element, "sink", "src");
    gst_object_unref(element);
    gst_element_set_bus(element, m_bus);
}

FrameElement::~FrameElement() {
    gst_element_set_bus(m_harness->element, nullptr);
    gst_object_unref(m_bus);
    gst_harness_teardown(m_harness);
}

void FrameElement::SetCaps(const std::string& frames, const std::string& pictures) {
    gst_harness_set_caps_str(m_harness, frames.c_str(), pictures.c_str());
}

void FrameElement::SetCaps(const std::string& frameFormat, const frame::SourceView& frame, const char* pictureFormat) {
    const bool isBayer = frame.format.family == frame::Family::Bayer;
    SetCaps(fmt::format("{},format={},width={},height={},framerate=25/1",
                        isBayer ? "video/x-bayer" : "video/x-kvx-truesense", frameFormat, frame.width, frame.height),
            fmt::format("video/x-raw,format={}", pictureFormat));
}

void FrameElement::Set(const char* property, const char* value) {
    gst_util_set_object_arg(G_OBJECT(m_harness->element), property, value);
}

GstFlowReturn FrameElement::Push(Buffer buffer) {
    return gst_harness_push(m_harness, buffer.release());
}

void FrameElement::ExpectPicture(Buffer buffer, const frame::SourceView& frame, const frame::Options& options) {
    ASSERT_EQ(Push(std::move(buffer)), GST_FLOW_OK) << TakeMessage();
    const Buffer picture(gst_harness_pull(m_harness));
    const Caps caps(gst_pad_get_current_caps(m_harness->sinkpad));
    GstVideoInfo info;
    ASSERT_TRUE(gst_video_info_from_caps(&info, caps.get()));
    EXPECT_EQ(Samples(picture.get(), info), ExpectedSamples(frame, GST_VIDEO_INFO_COMP_DEPTH(&info, 0) == 16, options));
}

void FrameElement::ExpectError(Buffer buffer, const std::string& part, GstFlowReturn flow) {
    EXPECT_EQ(Push(std::move(buffer)), flow);
    const std::string error = TakeMessage();
    EXPECT_NE(error.find(part), std::string::npos) << "'" << error << "' has no '" << part << "'";
}

std::string FrameElement::TakeMessage(GstMessageType type) {
    GstMessage* message = gst_bus_pop_filtered(m_bus, type);
    if (!message) return "";
    GError* error = nullptr;
    gchar* details = nullptr;
    (type == GST_MESSAGE_ERROR ? gst_message_parse_error : gst_message_parse_warning)(message, &error, &details);
    const std::string sentence = error->message;
    EXPECT_EQ(std::string(details ? details : "").find(KVX_SOURCE_DIR), std::string::npos) << details;
    g_free(details);
    g_error_free(error);
    gst_message_unref(message);
    return sentence;
}

Buffer MakeBuffer(const std::vector<uint8_t>& bytes) {
    if (bytes.empty()) return Buffer(gst_buffer_new());
    return Buffer(gst_buffer_new_wrapped(g_memdup2(bytes.data(), bytes.size()), bytes.size()));
}

std::vector<uint16_t> Samples(GstBuffer* buffer, const GstVideoInfo& info) {
    GstVideoFrame frame;
    EXPECT_TRUE(gst_video_frame_map(&frame, &info, buffer, GST_MAP_READ));
    const bool isWide = GST_VIDEO_FRAME_COMP_DEPTH(&frame, 0) == 16;
    const int high = info.finfo->flags & GST_VIDEO_FORMAT_FLAG_LE ? 1 : 0;
    std::vector<uint16_t> samples;
    for (int row = 0; row < info.height; ++row)
        for (int column = 0; column < info.width; ++column)
            for (uint32_t component = 0; component < GST_VIDEO_FRAME_N_COMPONENTS(&frame); ++component) {
                const uint8_t* at = static_cast<uint8_t*>(GST_VIDEO_FRAME_COMP_DATA(&frame, component)) +
                                    ptrdiff_t{row} * GST_VIDEO_FRAME_COMP_STRIDE(&frame, component) +
                                    column * GST_VIDEO_FRAME_COMP_PSTRIDE(&frame, component);
                const int sample = isWide ? at[high] << 8 | at[1 - high] : at[0];
                if (component < 3)
                    samples.push_back(static_cast<uint16_t>(sample));
                else
                    EXPECT_EQ(sample, isWide ? 65535 : 255);
            }
    gst_video_frame_unmap(&frame);
    return samples;
}

}  // namespace kvx::test
