/** What the element takes and gives, in GStreamer's terms: pad templates, and formats out of caps. */
#pragma once

#include <gst/video/video.h>

#include <cstdint>
#include <optional>

#include "KvxFrame/Format.h"
#include "gstreamer/WidePixels.h"

namespace kvx::gst {

/** Frames: Bayer mosaics by GStreamer's names, TrueSense mosaics by the frame layer's. */
GstCaps* MakeSinkCaps();

/** Pictures. */
GstCaps* MakeSourceCaps();

/** What the other pad can have when a pad of this direction has `caps`; `otherTemplate` is the other pad's. */
GstCaps* TransformCaps(GstPadDirection direction, const GstCaps* caps, const GstCaps* otherTemplate);

/** The frames that fixed caps describe. */
struct FrameFormat {
    frame::Format format;
    uint32_t width;
    uint32_t height;
};

/** Nothing where the caps name no format that can be converted, or no size. */
std::optional<FrameFormat> FrameFormatOf(const GstCaps* caps);

/** How pixels of a video format are made. */
struct PictureFormat {
    frame::Format format;         ///< what the frame layer writes
    WidePixelChange change = {};  ///< what is left to do afterwards
};

/** @param format one of MakeSourceCaps() */
PictureFormat PictureFormatOf(GstVideoFormat format);

}  // namespace kvx::gst
