// The class of the element: callbacks of GStreamer. No exception leaves them.
#include "gstreamer/Element.h"

#include <gst/base/gstbasetransform.h>
#include <gst/video/video.h>

#include <new>

#include "gstreamer/Caps.h"
#include "gstreamer/Properties.h"
#include "gstreamer/Session.h"

namespace {

namespace frame = kvx::frame;

struct State {
    kvx::gst::Settings settings;  // under the object lock, like their revision
    uint64_t revision = 1;
    kvx::gst::Session session;  // used by the streaming thread only, like `applied`
    uint64_t applied = 0;       // revision of the session's settings
};

struct GstKvxDemosaic {
    GstBaseTransform parent;
    State* state;
};
struct GstKvxDemosaicClass {
    GstBaseTransformClass parent_class;
};

G_DEFINE_TYPE(GstKvxDemosaic, gst_kvx_demosaic, GST_TYPE_BASE_TRANSFORM)

State& StateOf(gpointer instance) {
    return *static_cast<GstKvxDemosaic*>(instance)->state;
}

class ObjectLock {
public:
    explicit ObjectLock(gpointer object) : m_object(object) {
        GST_OBJECT_LOCK(m_object);
    }
    ~ObjectLock() {
        GST_OBJECT_UNLOCK(m_object);
    }
    ObjectLock(const ObjectLock&) = delete;
    ObjectLock& operator=(const ObjectLock&) = delete;

private:
    gpointer m_object;
};

void OnSetProperty(GObject* object, guint number, const GValue* value, GParamSpec* property) {
    const ObjectLock lock(object);
    State& state = StateOf(object);
    ++state.revision;
    if (!kvx::gst::SetProperty(state.settings, number, value)) {
        G_OBJECT_WARN_INVALID_PROPERTY_ID(object, number, property);
    }
}

void OnGetProperty(GObject* object, guint number, GValue* value, GParamSpec* property) {
    const ObjectLock lock(object);
    if (!kvx::gst::GetProperty(StateOf(object).settings, number, value)) {
        G_OBJECT_WARN_INVALID_PROPERTY_ID(object, number, property);
    }
}

void OnFinalize(GObject* object) {
    delete &StateOf(object);
    G_OBJECT_CLASS(gst_kvx_demosaic_parent_class)->finalize(object);
}

GstCaps* OnTransformCaps(GstBaseTransform* base, GstPadDirection direction, GstCaps* caps, GstCaps* filter) {
    GstPad* other = direction == GST_PAD_SINK ? base->srcpad : base->sinkpad;
    GstCaps* otherTemplate = gst_pad_get_pad_template_caps(other);
    GstCaps* result = kvx::gst::TransformCaps(direction, caps, otherTemplate);
    gst_caps_unref(otherTemplate);
    if (filter) {
        GstCaps* filtered = gst_caps_intersect_full(filter, result, GST_CAPS_INTERSECT_FIRST);
        gst_caps_unref(result);
        result = filtered;
    }
    return result;
}

/** Frames may have any padding; pictures have GStreamer's size. */
gboolean OnTransformSize(GstBaseTransform* /*base*/, GstPadDirection direction, GstCaps* /*caps*/, gsize /*size*/,
                         GstCaps* otherCaps, gsize* otherSize) {
    if (direction == GST_PAD_SINK) {
        GstVideoInfo picture;
        if (!gst_video_info_from_caps(&picture, otherCaps)) {
            return FALSE;
        }
        *otherSize = GST_VIDEO_INFO_SIZE(&picture);
        return TRUE;
    }
    try {
        const kvx::gst::FrameFormat frame = kvx::gst::FrameFormatOf(otherCaps);
        *otherSize = (frame::RowBytes(frame.format, frame.width) + 3) / 4 * 4 * frame.height;
        return TRUE;
    } catch (const std::exception&) {
        return FALSE;
    }
}

gboolean OnSetCaps(GstBaseTransform* base, GstCaps* frameCaps, GstCaps* pictureCaps) {
    try {
        const kvx::gst::FrameFormat frame = kvx::gst::FrameFormatOf(frameCaps);
        GstVideoInfo picture;
        if (!gst_video_info_from_caps(&picture, pictureCaps)) {
            return FALSE;
        }
        StateOf(base).session.SetFormats(frame, picture);
        StateOf(base).applied = 0;  // apply the settings to the new format
        return TRUE;
    } catch (const std::exception& error) {
        GST_ELEMENT_ERROR(base, STREAM, FORMAT, ("%s", error.what()),
                          ("%" GST_PTR_FORMAT " to %" GST_PTR_FORMAT, static_cast<void*>(frameCaps),
                           static_cast<void*>(pictureCaps)));
        return FALSE;
    }
}

/** Offers GstVideoMeta to upstream: rows may have any stride. */
gboolean OnProposeAllocation(GstBaseTransform* base, GstQuery* decideQuery, GstQuery* query) {
    if (!GST_BASE_TRANSFORM_CLASS(gst_kvx_demosaic_parent_class)->propose_allocation(base, decideQuery, query)) {
        return FALSE;
    }
    gst_query_add_allocation_meta(query, GST_VIDEO_META_API_TYPE, nullptr);
    return TRUE;
}

/** Enables GstVideoMeta in downstream's pool if it supports it. */
gboolean OnDecideAllocation(GstBaseTransform* base, GstQuery* query) {
    if (!GST_BASE_TRANSFORM_CLASS(gst_kvx_demosaic_parent_class)->decide_allocation(base, query)) {
        return FALSE;
    }
    if (gst_query_get_n_allocation_pools(query) == 0 ||
        !gst_query_find_allocation_meta(query, GST_VIDEO_META_API_TYPE, nullptr)) {
        return TRUE;
    }
    GstBufferPool* pool = nullptr;
    guint size = 0;
    guint least = 0;
    guint most = 0;
    gst_query_parse_nth_allocation_pool(query, 0, &pool, &size, &least, &most);
    if (pool && gst_buffer_pool_has_option(pool, GST_BUFFER_POOL_OPTION_VIDEO_META)) {
        GstStructure* config = gst_buffer_pool_get_config(pool);
        gst_buffer_pool_config_add_option(config, GST_BUFFER_POOL_OPTION_VIDEO_META);
        gst_buffer_pool_set_config(pool, config);
    }
    gst_clear_object(&pool);
    return TRUE;
}

/** Applies settings that have changed since the last frame. @throws what Session::Apply() throws */
void ApplyChanges(GstBaseTransform* base) {
    State& state = StateOf(base);
    kvx::gst::Settings settings;
    uint64_t revision = 0;
    {
        const ObjectLock lock(base);
        if (state.revision == state.applied) {
            return;
        }
        settings = state.settings;
        revision = state.revision;
    }
    state.applied = 0;  // until they are accepted
    for (const std::string& sentence : state.session.Apply(settings)) {
        GST_ELEMENT_WARNING(base, LIBRARY, SETTINGS, ("%s", sentence.c_str()), (nullptr));
    }
    state.applied = revision;
}

GstFlowReturn OnTransform(GstBaseTransform* base, GstBuffer* frame, GstBuffer* picture) {
    try {
        try {
            ApplyChanges(base);
        } catch (const frame::Error& error) {
            GST_ELEMENT_ERROR(base, LIBRARY, SETTINGS, ("%s", error.what()), ("result 0x%08X", error.Result()));
            return GST_FLOW_ERROR;
        }
        StateOf(base).session.Convert(frame, picture);
        return GST_FLOW_OK;
    } catch (const frame::Error& error) {
        GST_ELEMENT_ERROR(base, STREAM, FAILED, ("%s", error.what()), ("result 0x%08X", error.Result()));
    } catch (const std::bad_alloc&) {
        GST_ELEMENT_ERROR(base, RESOURCE, NO_SPACE_LEFT, ("There is not enough memory for a frame."), (nullptr));
    }
    return GST_FLOW_ERROR;
}

gboolean OnStop(GstBaseTransform* base) {
    StateOf(base).session.Release();
    StateOf(base).applied = 0;
    return TRUE;
}

void AddPadTemplate(GstElementClass* elementClass, const char* name, GstPadDirection direction, GstCaps* caps) {
    gst_element_class_add_pad_template(elementClass, gst_pad_template_new(name, direction, GST_PAD_ALWAYS, caps));
    gst_caps_unref(caps);
}

void gst_kvx_demosaic_class_init(GstKvxDemosaicClass* demosaicClass) {
    auto* gobjectClass = G_OBJECT_CLASS(demosaicClass);
    gobjectClass->set_property = OnSetProperty;
    gobjectClass->get_property = OnGetProperty;
    gobjectClass->finalize = OnFinalize;
    kvx::gst::InstallProperties(gobjectClass);

    auto* elementClass = GST_ELEMENT_CLASS(demosaicClass);
    gst_element_class_set_static_metadata(
        elementClass, "Demosaicing of camera frames", "Filter/Converter/Decoder/Video",
        "Makes pictures from Bayer and TrueSense frames in any packing", "KvxDemosaicing");
    AddPadTemplate(elementClass, "sink", GST_PAD_SINK, kvx::gst::MakeSinkCaps());
    AddPadTemplate(elementClass, "src", GST_PAD_SRC, kvx::gst::MakeSourceCaps());

    auto* baseClass = GST_BASE_TRANSFORM_CLASS(demosaicClass);
    baseClass->transform_caps = OnTransformCaps;
    baseClass->transform_size = OnTransformSize;
    baseClass->set_caps = OnSetCaps;
    baseClass->propose_allocation = OnProposeAllocation;
    baseClass->decide_allocation = OnDecideAllocation;
    baseClass->transform = OnTransform;
    baseClass->stop = OnStop;
}

void gst_kvx_demosaic_init(GstKvxDemosaic* self) {
    self->state = new State;
    gst_base_transform_set_qos_enabled(&self->parent, TRUE);
}

}  // namespace

GST_ELEMENT_REGISTER_DEFINE(kvxdemosaic, "kvxdemosaic", GST_RANK_SECONDARY, gst_kvx_demosaic_get_type())
