/** Conversion of an element's frames: its converter, formats and current settings. */
#pragma once

#include <gst/gst.h>

#include "gstreamer/Caps.h"
#include "gstreamer/FrameMapping.h"
#include "gstreamer/Settings.h"

namespace kvx::gst {

/** Used by the streaming thread only. */
class Session {
public:
    /** Sets the formats of the following frames and pictures. */
    void SetFormats(const FrameFormat& frame, const GstVideoInfo& picture);

    /**
     * Uses `settings` for the following frames.
     * @return sentences about the camera's profile, if it was read
     * @throws frame::Error if they do not fit each other or the frames; apply others before the next frame
     */
    std::vector<std::string> Apply(const Settings& settings);

    /** @throws frame::Error */
    void Convert(GstBuffer* frame, GstBuffer* picture);

    /** Frees the memory. */
    void Release() {
        m_converter.reset();
    }

private:
    void BalanceOnGrey(const frame::SourceView& frame);

    FrameFormat m_frame;
    GstVideoInfo m_picture;
    PictureFormat m_pictureFormat;
    Settings m_settings;
    frame::Format m_format;
    std::shared_ptr<const frame::CameraProfile> m_camera;
    std::optional<_KvxRect> m_greyPlace;
    std::optional<frame::Converter> m_converter;
};

}  // namespace kvx::gst
