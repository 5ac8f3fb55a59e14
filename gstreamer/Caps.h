/** Caps of the element: pad templates and conversion to formats. */
#pragma once

#include <gst/video/video.h>

#include <cstdint>

#include "KvxFrame/Format.h"
#include "gstreamer/WidePixels.h"

namespace kvx::gst {

/** Caps of frames: Bayer with GStreamer's names, TrueSense with the frame layer's. */
GstCaps* MakeSinkCaps();

/** Caps of pictures. */
GstCaps* MakeSourceCaps();

/** The caps of the other pad if the pad of this direction has `caps`; `otherTemplate` is the other pad's template. */
GstCaps* TransformCaps(GstPadDirection direction, const GstCaps* caps, const GstCaps* otherTemplate);

/** The frames that fixed caps describe. */
struct FrameFormat {
    frame::Format format;
    uint32_t width;
    uint32_t height;
};

/** The frames of fixed caps. @throws frame::Error for caps without a convertible format or without a size */
FrameFormat FrameFormatOf(const GstCaps* caps);

/** How the pixels of a video format are written. */
struct PictureFormat {
    frame::Format format;         ///< written by the frame layer
    WidePixelChange change = {};  ///< applied afterwards
};

/** @param format one of MakeSourceCaps() */
PictureFormat PictureFormatOf(GstVideoFormat format);

}  // namespace kvx::gst
