#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "gstreamer/FrameElement.h"

namespace kvx::test {
namespace {

using testing::HasSubstr;

const frame::TestFrame& Frame() {
    static const frame::TestFrame frame = frame::MakeNoise(frame::FormatByName("rggb12le"), 10, 5);
    return frame;
}

/** After a refusal the element goes on as if nothing had been. */
void ExpectRecovered(FrameElement& element) {
    const Buffer result = element.Convert(MakeBuffer(Frame().bytes));
    ASSERT_TRUE(result) << element.Error();
    EXPECT_EQ(Samples(result.get(), "RGB", 10, 5), ExpectedSamples(Frame().view, "RGB"));
}

TEST(GStreamerRefusal, OfBuffersThatAreTooSmall) {
    FrameElement element;
    element.SetCaps(Frame().view, "RGB");
    for (size_t size = 0; size < Frame().bytes.size(); size += size < 3 ? 1 : 16) {
        SCOPED_TRACE(size);
        EXPECT_EQ(element.Push(MakeBuffer(std::vector<uint8_t>(size))), GST_FLOW_ERROR);
        const std::string error = element.Error();
        const std::string sentence = size > 0 ? fmt::format("buffer of {} bytes is too small", size) : "no data";
        EXPECT_THAT(error, HasSubstr(sentence));
    }
    ExpectRecovered(element);
}

TEST(GStreamerRefusal, OfStridesAndMetasThatLeaveTheBuffer) {
    const struct {
        size_t offset;
        int stride;
        const char* error;
    } cases[] = {{0, 21, "too small"},           {1, 20, "too small"},
                 {0, 19, "too short"},           {101, 20, "GstVideoMeta"},
                 {0, -20, "GstVideoMeta"},       {79, -20, "GstVideoMeta"},
                 {80, -19, "too short"},         {81, -20, "too small"},
                 {SIZE_MAX, 20, "GstVideoMeta"}, {80, -2147483647 - 1, "GstVideoMeta"}};
    FrameElement element;
    element.SetCaps(Frame().view, "RGB");
    for (const auto& c : cases) {
        SCOPED_TRACE(fmt::format("offset {} stride {}", c.offset, c.stride));
        Buffer buffer = MakeBuffer(Frame().bytes);
        gsize offsets[GST_VIDEO_MAX_PLANES] = {c.offset};
        gint strides[GST_VIDEO_MAX_PLANES] = {c.stride};
        gst_buffer_add_video_meta_full(buffer.get(), GST_VIDEO_FRAME_FLAG_NONE, GST_VIDEO_FORMAT_ENCODED, 10, 5, 1,
                                       offsets, strides);
        EXPECT_EQ(element.Push(std::move(buffer)), GST_FLOW_ERROR);
        EXPECT_THAT(element.Error(), HasSubstr(c.error));
    }
    for (const auto& [stride, error] : {std::pair(19, "too short"), {21, "too small"}}) {
        g_object_set(element.Element(), "stride", stride, nullptr);
        EXPECT_EQ(element.Push(MakeBuffer(Frame().bytes)), GST_FLOW_ERROR);
        EXPECT_THAT(element.Error(), HasSubstr(error));
    }
    g_object_set(element.Element(), "stride", 0, nullptr);
    ExpectRecovered(element);
}

TEST(GStreamerRefusal, OfSettingsThatMeanNothing) {
    const struct {
        const char *property, *value, *usual, *error;
    } cases[] = {{"algorithm", "fats", nullptr, "bilinear"},
                 {"algorithm", "kodak", nullptr, "bilinear"},
                 {"white-balance", "blue", nullptr, "grey-world"},
                 {"white-balance", "1.5,1", nullptr, "3 numbers"},
                 {"white-balance", "1.5,1,2,", nullptr, "3 numbers"},
                 {"white-balance", "0,1,1", nullptr, "gain"},
                 {"matrix", "1,0,0", nullptr, "9 numbers"},
                 {"black-level", "4095", "0", "black"},
                 {"white-level", "5000", "0", "white"},
                 {"packing", "gige", "none", nullptr},
                 {"parameters", "p,NoSuchThing=1", "p", "NoSuchThing"},
                 {"parameters", "p,BayerAlgType=banana", "p", "BayerAlgType"}};
    FrameElement element;
    element.SetCaps(Frame().view, "RGB");
    for (const auto& c : cases) {
        SCOPED_TRACE(fmt::format("{}={}", c.property, c.value));
        gst_util_set_object_arg(G_OBJECT(element.Element()), c.property, c.value);
        if (c.error) {
            for (int round = 0; round < 2; ++round) {  // it stays refused until it is changed
                EXPECT_EQ(element.Push(MakeBuffer(Frame().bytes)), GST_FLOW_ERROR);
                EXPECT_THAT(element.Error(), HasSubstr(c.error));
            }
        }
        if (c.usual)
            gst_util_set_object_arg(G_OBJECT(element.Element()), c.property, c.usual);
        else
            g_object_set(element.Element(), c.property, nullptr, nullptr);
        ExpectRecovered(element);
    }
}

TEST(GStreamerRefusal, OfPackingsThatADepthDoesNotHave) {
    for (const auto& [format, packing] : {std::pair("rggb", "pfnc"), {"rggb14le", "gige"}, {"rggb16le", "mipi"}}) {
        SCOPED_TRACE(format);
        FrameElement element(fmt::format("packing={}", packing));
        element.SetCaps(FrameCaps(format, 4, 4), "video/x-raw");
        EXPECT_EQ(element.Push(MakeBuffer(std::vector<uint8_t>(64))), GST_FLOW_ERROR);
        EXPECT_THAT(element.Error(), HasSubstr("packing"));
    }
}

}  // namespace
}  // namespace kvx::test
