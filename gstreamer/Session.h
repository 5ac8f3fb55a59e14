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
     * @throws frame::Error if they do not fit each other or the frames; apply others before the next frame
     */
    void Apply(const Settings& settings);

    /** @throws frame::Error */
    void Convert(GstBuffer* frame, GstBuffer* picture);

    /** Frees the memory. */
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
