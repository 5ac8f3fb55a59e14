#include "gstreamer/Session.h"

namespace kvx::gst {

void Session::SetFormats(const FrameFormat& frame, const GstVideoInfo& picture) {
    m_frame = frame;
    m_picture = picture;
    m_pictureFormat = PictureFormatOf(GST_VIDEO_INFO_FORMAT(&picture));
}

std::vector<std::string> Session::Apply(const Settings& settings) {
    const frame::Family family = m_frame.format.family;
    const bool isSame = m_converter && m_converter->SourceFamily() == family &&
                        m_settings.algorithm == settings.algorithm && m_settings.analogGain == settings.analogGain &&
                        m_settings.parameters == settings.parameters && m_settings.camera == settings.camera &&
                        m_settings.defects == settings.defects;
    std::vector<std::string> warnings;
    if (!isSame) {
        m_converter.reset();
        m_camera = CameraOf(settings);
        m_converter = MakeConverter(settings, family, m_camera);
        if (m_camera) {
            warnings = m_camera->warnings;
        }
    }
    m_settings = settings;
    m_format = PackedFormat(settings, m_frame.format);
    m_converter->SetThreads(static_cast<int>(settings.threads));
    m_greyPlace = GreyPlaceOf(settings);
    m_converter->SetFinish(FinishOf(settings), GivenPartsOf(settings));
    return warnings;
}

/** The gains that make the place grey in this frame. */
void Session::BalanceOnGrey(const frame::SourceView& frame) {
    frame::Finish finish = FinishOf(m_settings).value();
    const frame::GivenParts given = GivenPartsOf(m_settings);
    finish.whiteBalance = frame::WhiteBalance::Given;
    const frame::Finish levels = m_camera ? FinishWith(*m_camera, finish, frame.format, given) : finish;
    finish.gains = MeasureGainsOfGrey(frame, *m_greyPlace, levels);
    m_converter->SetFinish(finish, given);
}

void Session::Convert(GstBuffer* frame, GstBuffer* picture) {
    const MappedBuffer from(frame, GST_MAP_READ);
    const MappedBuffer to(picture, GST_MAP_WRITE);
    FrameFormat frameFormat = m_frame;
    frameFormat.format = m_format;
    const frame::DestinationView view = ViewPicture(to, m_picture, m_pictureFormat.format);
    const frame::SourceView source = ViewFrame(from, frameFormat, m_settings.stride);
    if (m_greyPlace) {
        BalanceOnGrey(source);
    }
    m_converter->Convert(source, view);
    for (uint32_t row = 0; row < view.height; ++row) {
        ChangeWidePixels(static_cast<uint8_t*>(view.data) + static_cast<ptrdiff_t>(row) * view.stride, view.width,
                         m_pictureFormat.change);
    }
}

}  // namespace kvx::gst
