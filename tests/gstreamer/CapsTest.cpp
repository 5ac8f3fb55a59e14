#include "gstreamer/FrameElement.h"

namespace kvx::test {
namespace {

TEST(GStreamerCaps, OfPicturesHaveTheFieldsOfTheFrames) {
    const char* const cases[][3] = {
        {"framerate=25/1,pixel-aspect-ratio=2/1,interlace-mode=progressive,colorimetry=sRGB", "video/x-raw",
         "format=RGB,framerate=25/1,pixel-aspect-ratio=2/1,interlace-mode=progressive,colorimetry=sRGB"},
        // Frames from a file have no rate: it is "variable".
        {"views=1", "video/x-raw,format=BGRx", "format=BGRx,framerate=0/1,views=1"},
        // Fields that downstream requires and frames leave open.
        {"views=1", "video/x-raw,format=BGRA,framerate=(fraction)[5/1,9/1],colorimetry=sRGB",
         "format=BGRA,framerate=5/1,colorimetry=sRGB"},
    };
    for (const auto& [frames, pictures, fields] : cases) {
        SCOPED_TRACE(frames);
        FrameElement element;
        element.SetCaps(fmt::format("video/x-bayer,format=gbrg,width=8,height=4,{}", frames), pictures);
        ASSERT_EQ(element.Push(MakeBuffer(std::vector<uint8_t>(32, 7))), GST_FLOW_OK);
        const Caps caps(gst_pad_get_current_caps(element.Harness()->sinkpad));
        const Caps expected(gst_caps_from_string(fmt::format("video/x-raw,width=8,height=4,{}", fields).c_str()));
        EXPECT_TRUE(gst_caps_is_subset(caps.get(), expected.get()));
    }
}

TEST(GStreamerCaps, OfFramesWithoutConversionAreRefused) {
    // Those of the first two are not in the pad's template: GStreamer refuses them.
    for (const auto& [frames, sentence] : {std::pair("video/x-bayer,format=rggb11le", ""),
                                           {"video/x-raw,format=RGB", ""},
                                           {"video/x-kvx-truesense,format=SCF1WBWG16", "SCF1WBWG16"},
                                           {"video/x-kvx-truesense", "has no format"},
                                           {"video/x-kvx-truesense,format=BayerRG8", "no format of video/x-kvx-true"},
                                           {"video/x-kvx-truesense,format=SCF1WBWG13", "SCF1WBWG12"}}) {
        FrameElement element;
        element.SetCaps(fmt::format("{},width=8,height=4", frames), "video/x-raw");
        element.ExpectError(MakeBuffer(std::vector<uint8_t>(64)), sentence, GST_FLOW_NOT_NEGOTIATED);
    }
}

TEST(GStreamerCaps, MayChangeFromFrameToFrame) {
    const struct {
        const char* frame;
        uint32_t width, height;
        const char* picture;
    } steps[] = {{"rggb", 20, 10, "RGB"},      {"rggb", 33, 11, "RGB"},     {"bggr12le", 33, 11, "RGB"},
                 {"SCF1WBWG8", 16, 8, "BGRx"}, {"rggb", 8, 8, "RGBA64_LE"}, {"rggb", 20, 10, "RGB"}};
    FrameElement element;
    for (const auto& step : steps) {
        SCOPED_TRACE(fmt::format("{} {}x{}", step.frame, step.width, step.height));
        const frame::TestFrame frame = frame::MakeNoise(frame::FormatByName(step.frame), step.width, step.height);
        element.SetCaps(step.frame, frame.view, step.picture);
        element.ExpectPicture(MakeBuffer(frame.bytes), frame.view);
    }
}

/** A filter upstream, as in every pipeline that reads a file, gets caps that it can fix; rows may be anywhere. */
TEST(GStreamerCaps, AndMetasThatUpstreamMayUse) {
    FrameElement element;
    element.SetCaps("video/x-bayer,format=rggb,width=8,height=4",
                    "video/x-raw,framerate=(fraction)[0/1,2147483647/1],interlace-mode={progressive,mixed}");
    GstPad* const upstream = element.Harness()->srcpad;
    const Caps possible(gst_pad_peer_query_caps(upstream, nullptr)), current(gst_pad_get_current_caps(upstream));
    const GstStructure* structure = gst_caps_get_structure(possible.get(), 0);
    EXPECT_TRUE(gst_structure_has_field(structure, "width"));
    EXPECT_FALSE(gst_structure_has_field(structure, "framerate"));
    EXPECT_FALSE(gst_structure_has_field(structure, "interlace-mode"));
    GstQuery* query = gst_query_new_allocation(current.get(), FALSE);
    EXPECT_TRUE(gst_pad_peer_query(upstream, query));
    EXPECT_TRUE(gst_query_find_allocation_meta(query, GST_VIDEO_META_API_TYPE, nullptr));
    gst_query_unref(query);
}

}  // namespace
}  // namespace kvx::test
