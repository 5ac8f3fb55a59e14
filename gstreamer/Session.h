/** The frames of an element between caps and caps: its converter, and the settings that it works with. */
#pragma once

#include <gst/gst.h>

#include "gstreamer/Caps.h"
#include "gstreamer/FrameMapping.h"
#include "gstreamer/Settings.h"

namespace kvx::gst {

/** Used by the streaming thread only. */
class Session {
public:
    /** What frames and pictures are from now on. */
    void SetFormats(const FrameFormat& frame, const GstVideoInfo& picture);

    /**
     * Works with `settings` from now on.
     * @throws frame::Error where they do not fit each other or the frames; the next frame then needs others
     */
    void Apply(const Settings& settings);

    /** @throws frame::Error */
    void Convert(GstBuffer* frame, GstBuffer* picture);

    /** Gives back the memory. */
    void Release() {
        m_converter.reset();
    }

private:
    FrameFormat m_frame;
    GstVideoInfo m_picture;
    PictureFormat m_pictureFormat;
    Settings m_settings;
    frame::Format m_format;
    std::optional<frame::Converter> m_converter;
};

}  // namespace kvx::gst
