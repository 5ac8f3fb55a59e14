#include "gstreamer/Session.h"

namespace kvx::gst {

void Session::SetFormats(const FrameFormat& frame, const GstVideoInfo& picture) {
    m_frame = frame;
    m_picture = picture;
    m_pictureFormat = PictureFormatOf(GST_VIDEO_INFO_FORMAT(&picture));
}

void Session::Apply(const Settings& settings) {
    const frame::Family family = m_frame.format.family;
    const bool isSame = m_converter && m_converter->SourceFamily() == family &&
                        m_settings.algorithm == settings.algorithm && m_settings.analogGain == settings.analogGain &&
                        m_settings.parameters == settings.parameters && m_settings.camera == settings.camera &&
                        m_settings.defects == settings.defects;
    if (!isSame) {
        m_converter.reset();
        m_converter = MakeConverter(settings, family);
    }
    m_settings = settings;
    m_format = PackedFormat(settings, m_frame.format);
    m_converter->SetThreads(static_cast<int>(settings.threads));
    m_converter->SetFinish(FinishOf(settings));
}

void Session::Convert(GstBuffer* frame, GstBuffer* picture) {
    const MappedBuffer from(frame, GST_MAP_READ);
    const MappedBuffer to(picture, GST_MAP_WRITE);
    FrameFormat frameFormat = m_frame;
    frameFormat.format = m_format;
    const frame::DestinationView view = ViewPicture(to, m_picture, m_pictureFormat.format);
    m_converter->Convert(ViewFrame(from, frameFormat, m_settings.stride), view);
    for (uint32_t row = 0; row < view.height; ++row) {
        ChangeWidePixels(static_cast<uint8_t*>(view.data) + static_cast<ptrdiff_t>(row) * view.stride, view.width,
                         m_pictureFormat.change);
    }
}

}  // namespace kvx::gst
