#include <malloc.h>

#include "gstreamer/FrameElement.h"

namespace kvx::test {
namespace {

/** Downstream offers a pool whose pictures have margins, as a display may need them. */
GstPadProbeReturn OfferPool(GstPad* /*pad*/, GstPadProbeInfo* info, gpointer /*data*/) {
    GstQuery* query = GST_PAD_PROBE_INFO_QUERY(info);
    if (GST_QUERY_TYPE(query) != GST_QUERY_ALLOCATION || !(GST_PAD_PROBE_INFO_TYPE(info) & GST_PAD_PROBE_TYPE_PUSH))
        return GST_PAD_PROBE_OK;
    GstCaps* caps = nullptr;
    gst_query_parse_allocation(query, &caps, nullptr);
    GstVideoInfo picture;
    gst_video_info_from_caps(&picture, caps);
    GstVideoAlignment alignment;
    gst_video_alignment_reset(&alignment);
    alignment.padding_left = 5;
    alignment.padding_right = 9;
    alignment.padding_top = 3;
    GstBufferPool* pool = gst_video_buffer_pool_new();
    GstStructure* config = gst_buffer_pool_get_config(pool);
    gst_buffer_pool_config_set_params(config, caps, static_cast<guint>(picture.size), 0, 0);
    gst_buffer_pool_config_add_option(config, GST_BUFFER_POOL_OPTION_VIDEO_META);
    gst_buffer_pool_config_add_option(config, GST_BUFFER_POOL_OPTION_VIDEO_ALIGNMENT);
    gst_buffer_pool_config_set_video_alignment(config, &alignment);
    gst_buffer_pool_set_config(pool, config);
    gst_query_add_allocation_pool(query, pool, static_cast<guint>(picture.size), 0, 0);
    gst_query_add_allocation_meta(query, GST_VIDEO_META_API_TYPE, nullptr);
    gst_object_unref(pool);
    return GST_PAD_PROBE_HANDLED;
}

TEST(GStreamerAllocation, UsesTheRowsOfDownstreamsPool) {
    const frame::TestFrame frame = frame::MakeNoise(frame::FormatByName("grbg10le"), 33, 12);
    for (const char* picture : {"RGB", "BGRA", "ARGB64_LE"}) {
        SCOPED_TRACE(picture);
        FrameElement element;
        gst_pad_add_probe(element.Harness()->sinkpad, GST_PAD_PROBE_TYPE_QUERY_DOWNSTREAM, OfferPool, nullptr, nullptr);
        element.SetCaps("grbg10le", frame.view, picture);
        for (int round = 0; round < 3; ++round) element.ExpectPicture(MakeBuffer(frame.bytes), frame.view);
        ASSERT_EQ(element.Push(MakeBuffer(frame.bytes)), GST_FLOW_OK);
        const Buffer result(gst_harness_pull(element.Harness()));
        const GstVideoMeta* meta = gst_buffer_get_video_meta(result.get());
        ASSERT_TRUE(meta);
        EXPECT_GT(meta->offset[0], 0u);
    }
}

/** Memory that is still mapped for reading cannot be mapped for writing. */
TEST(GStreamerAllocation, UnmapsBuffersAndReleasesItsMemoryWhenItStops) {
    const frame::TestFrame frame = frame::MakeNoise(frame::FormatByName("SCF1WBWG12"), 1000, 800);
    FrameElement element("algorithm=kodak-like");
    element.SetCaps("SCF1WBWG12", frame.view, "RGB");
    Buffer buffer = MakeBuffer(frame.bytes);
    GstMemory* memory = gst_memory_ref(gst_buffer_peek_memory(buffer.get(), 0));
    ASSERT_EQ(element.Push(std::move(buffer)), GST_FLOW_OK);
    GstMapInfo info;
    ASSERT_TRUE(gst_memory_map(memory, &info, GST_MAP_WRITE));
    gst_memory_unmap(memory, &info);
    gst_memory_unref(memory);

    const auto used = [] {
        const auto heap = mallinfo2();
        return heap.uordblks + heap.hblkhd;
    };
    const size_t before = used();
    gst_element_set_state(element.Harness()->element, GST_STATE_READY);
    if (before > 0) {  // the sanitizers' allocators do not count
        EXPECT_LT(used() + 2'000'000, before);
    }
}

}  // namespace
}  // namespace kvx::test
