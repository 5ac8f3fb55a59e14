#include "gstreamer/Caps.h"

#include <algorithm>
#include <array>
#include <string>

#include "frame/base/Fail.h"

namespace kvx::gst {
namespace {

using frame::Fail;
using frame::Order;

constexpr const char* kBayer = "video/x-bayer";
constexpr const char* kTrueSense = "video/x-kvx-truesense";

struct Picture {
    GstVideoFormat video;
    Order order;
    uint8_t bits;
    WidePixelChange change = {};
};
// The first is the default, if downstream accepts it.
constexpr std::array kPictures = {
    Picture{GST_VIDEO_FORMAT_RGB, Order::Rgb, 8},
    Picture{GST_VIDEO_FORMAT_BGR, Order::Bgr, 8},
    Picture{GST_VIDEO_FORMAT_RGBx, Order::Rgbx, 8},
    Picture{GST_VIDEO_FORMAT_BGRx, Order::Bgrx, 8},
    Picture{GST_VIDEO_FORMAT_RGBA, Order::Rgba, 8},
    Picture{GST_VIDEO_FORMAT_BGRA, Order::Bgra, 8},
    Picture{GST_VIDEO_FORMAT_RGBA64_LE, Order::Rgba, 16},
    Picture{GST_VIDEO_FORMAT_BGRA64_LE, Order::Bgra, 16},
    Picture{GST_VIDEO_FORMAT_ARGB64_LE, Order::Rgba, 16, {.alphaFirst = true}},
    Picture{GST_VIDEO_FORMAT_ABGR64_LE, Order::Bgra, 16, {.alphaFirst = true}},
    Picture{GST_VIDEO_FORMAT_ARGB64, Order::Rgba, 16, {.alphaFirst = true}},  // the processor's byte order
    Picture{GST_VIDEO_FORMAT_RGBA64_BE, Order::Rgba, 16, {.bigEndian = true}},
    Picture{GST_VIDEO_FORMAT_BGRA64_BE, Order::Bgra, 16, {.bigEndian = true}},
    Picture{GST_VIDEO_FORMAT_ARGB64_BE, Order::Rgba, 16, {.alphaFirst = true, .bigEndian = true}},
    Picture{GST_VIDEO_FORMAT_ABGR64_BE, Order::Bgra, 16, {.alphaFirst = true, .bigEndian = true}},
};

// Fields that a picture takes from its frame. Any value is accepted, and a frame need not have them.
constexpr std::array kSharedFields = {
    "width",          "height",      "framerate",      "max-framerate",  "views", "pixel-aspect-ratio",
    "interlace-mode", "field-order", "multiview-mode", "multiview-flags"};

GstStructure* NewStructure(const char* name) {
    return gst_structure_new(name, "width", GST_TYPE_INT_RANGE, 1, G_MAXINT, "height", GST_TYPE_INT_RANGE, 1, G_MAXINT,
                             nullptr);
}

class NameList {
public:
    NameList() {
        g_value_init(&m_list, GST_TYPE_LIST);
    }
    void Add(const char* name) {
        GValue value = G_VALUE_INIT;
        g_value_init(&value, G_TYPE_STRING);
        g_value_set_string(&value, name);
        gst_value_list_append_and_take_value(&m_list, &value);
    }
    /** Leaves the list empty. */
    void MoveInto(GstStructure* structure) {
        gst_structure_take_value(structure, "format", &m_list);
    }

private:
    GValue m_list = G_VALUE_INIT;
};

/**
 * Whether a picture's field limits its frame's. A list or range does not: frames without that field, as from a file,
 * could then not have fixed caps.
 */
bool IsLimit(const GValue* value) {
    if (GST_VALUE_HOLDS_FRACTION_RANGE(value)) {
        const GValue* least = gst_value_get_fraction_range_min(value);
        const GValue* most = gst_value_get_fraction_range_max(value);
        return gst_value_get_fraction_numerator(least) > 0 || gst_value_get_fraction_numerator(most) < G_MAXINT;
    }
    return gst_value_is_fixed(value) || GST_VALUE_HOLDS_INT_RANGE(value);
}

}  // namespace

GstCaps* MakeSinkCaps() {
    NameList formats;
    for (const frame::Format& format : frame::AllFormats()) {
        if (format.family == frame::Family::Bayer) {
            for (const frame::FormatName& name : frame::NamesOf(format)) {
                if (name.scheme == frame::Scheme::GStreamer) {
                    formats.Add(name.name.c_str());
                }
            }
        }
    }
    GstStructure* bayer = NewStructure(kBayer);
    formats.MoveInto(bayer);
    return gst_caps_new_full(bayer, NewStructure(kTrueSense), nullptr);
}

GstCaps* MakeSourceCaps() {
    NameList formats;
    for (const Picture& picture : kPictures) {
        formats.Add(gst_video_format_to_string(picture.video));
    }
    GstStructure* raw = NewStructure("video/x-raw");
    formats.MoveInto(raw);
    gst_structure_set(raw, "framerate", GST_TYPE_FRACTION_RANGE, 0, 1, G_MAXINT, 1, nullptr);
    return gst_caps_new_full(raw, nullptr);
}

GstCaps* TransformCaps(GstPadDirection direction, const GstCaps* caps, const GstCaps* otherTemplate) {
    GstCaps* result = gst_caps_new_empty();
    for (guint from = 0; from < gst_caps_get_size(caps); ++from) {
        const GstStructure* structure = gst_caps_get_structure(caps, from);
        for (guint to = 0; to < gst_caps_get_size(otherTemplate); ++to) {
            GstStructure* other = gst_structure_copy(gst_caps_get_structure(otherTemplate, to));
            const auto share = [&](const char* field) {
                const GValue* value = gst_structure_get_value(structure, field);
                if (value && (direction == GST_PAD_SINK || IsLimit(value))) {
                    gst_structure_set_value(other, field, value);
                }
            };
            std::ranges::for_each(kSharedFields, share);
            // A picture's colorimetry does not limit its frame.
            if (direction == GST_PAD_SINK) {
                share("colorimetry");
            }
            result = gst_caps_merge_structure(result, other);
        }
    }
    return result;
}

FrameFormat FrameFormatOf(const GstCaps* caps) {
    const GstStructure* structure = gst_caps_get_structure(caps, 0);
    const char* media = gst_structure_get_name(structure);
    const char* name = gst_structure_get_string(structure, "format");
    int width = 0;
    int height = 0;
    if (!name) {
        Fail(KvxResult_InvalidArgument, "caps: {} has no format: add one of 'kvx-demosaic formats', format=NAME",
             media);
    }
    if (!gst_structure_get_int(structure, "width", &width) || !gst_structure_get_int(structure, "height", &height)) {
        Fail(KvxResult_InvalidArgument, "caps: {} has no size: add width=PIXELS,height=ROWS", media);
    }
    const bool isTrueSense = gst_structure_has_name(structure, kTrueSense);
    const frame::Format format = frame::FormatByName(name);
    if (!frame::IsSource(format) || format.family != (isTrueSense ? frame::Family::TrueSense : frame::Family::Bayer)) {
        Fail(KvxResult_InvalidArgument, "caps: {} is no format of {}: give one of {}, see 'kvx-demosaic formats'", name,
             media, isTrueSense ? "TrueSense frames up to 14 bits" : "Bayer frames");
    }
    return {format, static_cast<uint32_t>(width), static_cast<uint32_t>(height)};
}

PictureFormat PictureFormatOf(GstVideoFormat format) {
    const auto* picture = std::ranges::find(kPictures, format, &Picture::video);
    g_assert(picture != kPictures.end());
    return {{.family = frame::Family::Colour, .bits = picture->bits, .order = picture->order}, picture->change};
}

}  // namespace kvx::gst
