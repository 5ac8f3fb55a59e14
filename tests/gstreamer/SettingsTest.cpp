#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "gstreamer/FrameElement.h"

namespace kvx::test {
namespace {

frame::Options WithFinish(const frame::Finish& finish) {
    return {"", {}, 0, finish};
}

frame::Finish MakeFinish(void (*change)(frame::Finish&)) {
    frame::Finish finish;
    change(finish);
    return finish;
}

/** Each change, on top of the ones before, counts from the next frame on. */
TEST(GStreamerSettings, CountFromTheNextFrameOn) {
    using frame::Finish;
    const struct {
        const char *property, *value;
        frame::Options options;
    } steps[] = {
        {"n-threads", "2", {}},
        {"algorithm", "edge-aware", {"edge-aware", {}, 0, {}}},
        {"algorithm", "", {}},
        {"parameters", "p,BayerAlgType=(int)1", {"ipp", {}, 0, {}}},
        {"parameters", "p", {}},
        {"black-level", "100", WithFinish(MakeFinish([](Finish& f) { f.blackLevel = 100; }))},
        {"white-level", "3000", WithFinish(MakeFinish([](Finish& f) { f.blackLevel = 100, f.whiteLevel = 3000; }))},
        {"black-level", "0", WithFinish(MakeFinish([](Finish& f) { f.whiteLevel = 3000; }))},
        {"white-level", "0", {}},
        {"white-balance", "2.5,1.25,1.5", WithFinish(MakeFinish([](Finish& f) {
             f.gains = {2.5, 1.25, 1.5, 1.25};
         }))},
        {"white-balance", "auto",
         WithFinish(MakeFinish([](Finish& f) { f.whiteBalance = frame::WhiteBalance::WhitePatch; }))},
        {"white-balance", "grey-world",
         WithFinish(MakeFinish([](Finish& f) { f.whiteBalance = frame::WhiteBalance::GreyWorld; }))},
        {"white-balance", "", {}},
        {"tone", "srgb", WithFinish(MakeFinish([](Finish& f) { f.tone = frame::ToneCurve::Srgb; }))},
        {"tone", "linear", WithFinish({})},
        {"tone", "default", {}},
        {"matrix", "0,1,0,0,0,1,0.5,0.25,0.25",
         WithFinish(MakeFinish([](Finish& f) { f.matrix = {0, 1, 0, 0, 0, 1, 0.5, 0.25, 0.25}; }))}};
    const frame::TestFrame frame =
        frame::MakeFrame(frame::FormatByName("rggb12le"), 24, 12, [](uint32_t row, uint32_t column) {
            return static_cast<uint16_t>((row * 397 + column * 1151 + column % 2 * 300) % 3500);
        });
    FrameElement element;
    element.SetCaps(frame.view, "RGB");
    for (const auto& step : steps) {
        SCOPED_TRACE(fmt::format("{}={}", step.property, step.value));
        gst_util_set_object_arg(G_OBJECT(element.Element()), step.property, step.value);
        const Buffer result = element.Convert(MakeBuffer(frame.bytes));
        ASSERT_TRUE(result) << element.Error();
        EXPECT_EQ(Samples(result.get(), "RGB", 24, 12), ExpectedSamples(frame.view, "RGB", step.options));
    }
}

TEST(GStreamerSettings, OfTrueSenseReachTheComponent) {
    const frame::TestFrame frame = frame::MakeNoise(frame::FormatByName("SCF1WBWG12"), 32, 16);
    FrameElement element(
        "algorithm=kodak-like tone=linear parameters=\"p,sharpnessEnable=false,panSigma0=(double)2.5\"");
    element.SetCaps(frame.view, "BGR");
    const Buffer result = element.Convert(MakeBuffer(frame.bytes));
    ASSERT_TRUE(result) << element.Error();
    EXPECT_EQ(Samples(result.get(), "BGR", 32, 16),
              ExpectedSamples(frame.view, "BGR",
                              {"kodak-like", {{"sharpnessEnable", "0"}, {"panSigma0", "2.5"}}, 0, frame::Finish{}}));
}

TEST(GStreamerSettings, ReadBackAsTheyWereSet) {
    for (const auto& [property, value] : {std::pair("algorithm", "ipp"),
                                          {"n-threads", "3"},
                                          {"white-balance", "auto"},
                                          {"black-level", "64"},
                                          {"white-level", "4000"},
                                          {"matrix", "1,0,0,0,1,0,0,0,1"},
                                          {"tone", "srgb"},
                                          {"packing", "gige"},
                                          {"stride", "77"},
                                          {"parameters", "parameters, RR=(string)0.5;"}}) {
        FrameElement element;
        gst_util_set_object_arg(G_OBJECT(element.Element()), property, value);
        GValue result = G_VALUE_INIT;
        g_object_get_property(G_OBJECT(element.Element()), property, &result);
        gchar* text = G_VALUE_HOLDS_STRING(&result) ? g_value_dup_string(&result)
                      : G_VALUE_HOLDS(&result, GST_TYPE_STRUCTURE)
                          ? gst_structure_to_string(gst_value_get_structure(&result))
                          : gst_value_serialize(&result);
        EXPECT_STREQ(text, value) << property;
        g_free(text);
        g_value_unset(&result);
    }
}

/** Changes by another thread fall between frames, never into one. */
TEST(GStreamerSettings, ChangeBetweenFramesWhilePlaying) {
    const frame::TestFrame frame = frame::MakeNoise(frame::FormatByName("rggb"), 300, 100);
    const std::vector<uint16_t> plain = ExpectedSamples(frame.view, "RGB", {"edge-aware", {}, 0, {}});
    const std::vector<uint16_t> other = ExpectedSamples(frame.view, "RGB", {"ipp", {}, 0, {}});
    FrameElement element("algorithm=ipp");
    element.SetCaps(frame.view, "RGB");
    std::atomic<bool> isDone = false;
    std::jthread changes([&] {
        for (int round = 0; !isDone; ++round) {
            g_object_set(element.Element(), "algorithm", round % 2 ? "ipp" : "edge-aware", "n-threads", round % 3,
                         nullptr);
            std::this_thread::yield();
        }
    });
    int plains = 0;
    int others = 0;
    for (int round = 0; round < 200; ++round) {
        const Buffer result = element.Convert(MakeBuffer(frame.bytes));
        ASSERT_TRUE(result) << element.Error();
        const std::vector<uint16_t> samples = Samples(result.get(), "RGB", 300, 100);
        plains += samples == plain;
        others += samples == other;
    }
    isDone = true;
    EXPECT_EQ(plains + others, 200);
    EXPECT_GT(std::min(plains, others), 0);
}

}  // namespace
}  // namespace kvx::test
