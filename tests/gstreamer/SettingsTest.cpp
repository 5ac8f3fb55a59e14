#include <algorithm>
#include <atomic>
#include <fstream>
#include <set>
#include <thread>

#include "gstreamer/FrameElement.h"

namespace kvx::test {
namespace {

using frame::Options;

/** Each change applies from the next frame on, with the ones before. Values that are read back work in a second
 * element. */
TEST(GStreamerSettings, CountFromTheNextFrameOn) {
    static constexpr frame::Gains gains{2.5, 1.25, 1.5, 1.25};
    const struct {
        const char *property, *value;
        void (*change)(Options&);
    } steps[] = {
        {"n-threads", "2", [](Options&) {}},
        {"stride", "48", [](Options&) {}},
        {"packing", "none", [](Options&) {}},
        {"defects", "auto", [](Options& o) { o.defects = frame::Defects::Auto; }},
        {"camera", "settings-test.json",
         [](Options& o) {
             o.camera = std::make_shared<frame::CameraProfile>(frame::ReadCameraProfile("settings-test.json"));
         }},
        {"camera", "", [](Options& o) { o.camera.reset(); }},
        {"algorithm", "edge-aware", [](Options& o) { o.algorithm = "edge-aware"; }},
        {"algorithm", "", [](Options& o) { o.algorithm = ""; }},
        {"parameters", "p,BayerAlgType=(int)1", [](Options& o) { o.algorithm = "ipp"; }},
        {"parameters", "p", [](Options& o) { o.algorithm = ""; }},
        {"black-level", "1.5,2,3.25,4",
         [](Options& o) { o.finish.emplace().blackLevel = frame::Levels(1.5, 2, 3.25, 4); }},
        {"black-level", "", [](Options& o) { o.finish.reset(); }},
        {"look", "natural", [](Options& o) { o.finish = frame::Finish::Natural(); }},
        {"exposure", "-0.5", [](Options& o) { o.finish->autoExposure = false, o.finish->exposure = -0.5; }},
        {"look", "none", [](Options& o) { o.finish.emplace().exposure = -0.5; }},
        {"exposure", "", [](Options& o) { o.finish.reset(); }},
        {"tone", "srgb", [](Options& o) { o.finish.emplace().tone = frame::ToneCurve::Srgb; }},
        {"white-level", "3000", [](Options& o) { o.finish->whiteLevel = 3000; }},
        {"white-balance", "2.5,1.25,1.5", [](Options& o) { o.finish->gains = gains; }},
        {"white-balance", "auto",
         [](Options& o) { o.finish->gains = frame::Gains(), o.finish->whiteBalance = frame::WhiteBalance::Auto; }},
        {"white-balance", "", [](Options& o) { o.finish->whiteBalance = frame::WhiteBalance::Given; }},
        {"tone", "linear", [](Options& o) { o.finish->tone = frame::ToneCurve::Linear; }},
        {"matrix", "0,1,0,0,0,1,0.5,0.25,0.25",
         [](Options& o) { o.finish->matrix = {0, 1, 0, 0, 0, 1, 0.5, 0.25, 0.25}; }}};
    frame::CameraProfile camera;
    camera.format = frame::FormatByName("BayerRG12");
    camera.width = 24;
    camera.height = 12;
    camera.blackLevel = 100;
    camera.deadPixels = {{5, 5}};
    frame::WriteCameraProfile(camera, "settings-test.json");
    const frame::TestFrame frame =
        frame::MakeFrame(frame::FormatByName("rggb12le"), 24, 12, [](uint32_t row, uint32_t column) {
            return static_cast<uint16_t>((row * 397 + column * 1151 + column % 2 * 300) % 3500);
        });
    FrameElement element, copy;
    for (FrameElement* one : {&element, &copy}) one->SetCaps("rggb12le", frame.view, "RGB");
    Options options;
    for (const auto& step : steps) {
        SCOPED_TRACE(fmt::format("{}={}", step.property, step.value));
        element.Set(step.property, step.value);
        step.change(options);
        element.ExpectPicture(MakeBuffer(frame.bytes), frame.view, options);
        GValue value = G_VALUE_INIT;
        g_object_get_property(G_OBJECT(element.Harness()->element), step.property, &value);
        g_object_set_property(G_OBJECT(copy.Harness()->element), step.property, &value);
        g_value_unset(&value);
        copy.ExpectPicture(MakeBuffer(frame.bytes), frame.view, options);
    }
}

/** A profile's sentences are warnings. What properties set holds, also a neutral value. */
TEST(GStreamerSettings, HoldAgainstTheCamera) {
    std::ofstream("holds-test.json") << R"({"kvx_camera_profile": 1, "format": "BayerRG12", "black_level": 300,
        "white_balance_gains": {"R": 2, "G": 1, "B": 3}, "blak_level": 1})";
    const frame::TestFrame frame = frame::MakeFlat(frame::FormatByName("rggb12le"), 24, 12, {0.2, 0.4, 0.3});
    FrameElement element("camera=holds-test.json stride=51");
    element.SetCaps("rggb12le", frame.view, "RGB");
    Options options;
    options.camera = std::make_shared<frame::CameraProfile>(frame::ReadCameraProfile("holds-test.json"));
    element.ExpectPicture(MakeBuffer(frame.bytes), frame.view, options);
    EXPECT_EQ(element.TakeMessage(GST_MESSAGE_WARNING), options.camera->warnings.at(0));
    element.Set("black-level", "0");
    element.Set("white-balance", "1,1,1");
    options.finish.emplace();
    options.camera.reset();
    element.ExpectPicture(MakeBuffer(frame.bytes), frame.view, options);
    element.Set("white-balance", "");
    element.Set("white-balance-from", "4,2,8,6");
    options.finish->gains = MeasureGainsOfGrey(frame.view, {4, 2, 8, 6}, *options.finish);
    element.ExpectPicture(MakeBuffer(frame.bytes), frame.view, options);
    element.Set("white-balance", "auto");
    element.ExpectError(MakeBuffer(frame.bytes), "one of them");
}

/** Changes by another thread take effect between frames, never within one. */
TEST(GStreamerSettings, ChangeBetweenFramesWhilePlaying) {
    const frame::TestFrame frame =
        frame::MakeFrame(frame::FormatByName("rggb"), 300, 100, [](uint32_t, uint32_t) { return uint16_t{80}; });
    FrameElement element;
    element.SetCaps("rggb", frame.view, "RGB");
    std::atomic<bool> isDone = false;
    std::jthread changes([&] {
        while (!isDone)
            for (const char* matrix : {"0.5,0,0,0,0.5,0,0,0,0.5", "2,0,0,0,2,0,0,0,2"}) {
                element.Set("matrix", matrix);
                std::this_thread::yield();
            }
    });
    GstVideoInfo info;
    gst_video_info_set_format(&info, GST_VIDEO_FORMAT_RGB, 300, 100);
    std::set<uint16_t> values;
    for (int round = 0; round < 200; ++round) {
        ASSERT_EQ(element.Push(MakeBuffer(frame.bytes)), GST_FLOW_OK);
        const std::vector<uint16_t> samples = Samples(Buffer(gst_harness_pull(element.Harness())).get(), info);
        EXPECT_EQ(std::ranges::count(samples, samples[0]), std::ssize(samples));
        values.insert(samples[0]);
    }
    isDone = true;
    EXPECT_GE(values.size(), 2u);
}

}  // namespace
}  // namespace kvx::test
