#include <climits>

#include "gstreamer/FrameElement.h"

namespace kvx::test {
namespace {

const frame::TestFrame& Frame() {
    static const frame::TestFrame frame = frame::MakeNoise(frame::FormatByName("rggb12le"), 10, 5);
    return frame;
}

class GStreamerRefusal : public testing::Test {
protected:
    GStreamerRefusal() {
        m_element.SetCaps("rggb12le", Frame().view, "RGB");
    }
    /** After a refusal the element goes on as if nothing had been. */
    void ExpectRecovered() {
        m_element.ExpectPicture(MakeBuffer(Frame().bytes), Frame().view);
    }

    FrameElement m_element;
};

TEST_F(GStreamerRefusal, OfBuffersThatAreTooSmall) {
    for (size_t size = 0; size < Frame().bytes.size(); size += size < 3 ? 1 : 16)
        m_element.ExpectError(MakeBuffer(std::vector<uint8_t>(size)),
                              size > 0 ? fmt::format("buffer of {} bytes is too small", size) : "no data");
    ExpectRecovered();
}

TEST_F(GStreamerRefusal, OfCapsThatContradictTheBuffer) {
    std::vector<uint8_t> larger = Frame().bytes;
    larger.resize(larger.size() + 20);
    m_element.ExpectError(MakeBuffer(larger), "10 x 5 pixels of BayerRG12 take 100 bytes, but it has 120");
    larger.pop_back();  // less than a row more, as some cameras append
    m_element.ExpectPicture(MakeBuffer(larger), Frame().view);
    Buffer buffer = MakeBuffer(Frame().bytes);
    gst_buffer_add_video_meta(buffer.get(), GST_VIDEO_FRAME_FLAG_NONE, GST_VIDEO_FORMAT_GRAY16_LE, 10, 4);
    m_element.ExpectError(std::move(buffer), "GstVideoMeta has 10 x 4");
    ExpectRecovered();
}

TEST_F(GStreamerRefusal, OfStridesAndMetasThatLeaveTheBuffer) {
    const struct {
        size_t offset;
        int stride;
        const char* error;
    } cases[] = {{0, 21, "too small"},         {1, 20, "too small"},     {0, 19, "too short"},
                 {101, 20, "GstVideoMeta"},    {0, -20, "GstVideoMeta"}, {79, -20, "GstVideoMeta"},
                 {80, -19, "too short"},       {81, -20, "too small"},   {SIZE_MAX, 20, "GstVideoMeta"},
                 {80, INT_MIN, "GstVideoMeta"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(fmt::format("offset {} stride {}", c.offset, c.stride));
        Buffer buffer = MakeBuffer(Frame().bytes);
        gsize offsets[GST_VIDEO_MAX_PLANES] = {c.offset};
        gint strides[GST_VIDEO_MAX_PLANES] = {c.stride};
        gst_buffer_add_video_meta_full(buffer.get(), GST_VIDEO_FRAME_FLAG_NONE, GST_VIDEO_FORMAT_ENCODED, 10, 5, 1,
                                       offsets, strides);
        m_element.ExpectError(std::move(buffer), c.error);
    }
    ExpectRecovered();
}

TEST_F(GStreamerRefusal, OfSettingsThatMeanNothing) {
    const struct {
        const char *property, *value, *usual, *error;
    } cases[] = {{"algorithm", "fats", "", "bilinear"},
                 {"white-balance", "blue", "", "grey-world"},
                 {"white-balance", "1.5,1", "", "3 numbers"},
                 {"white-balance", "0,1,1", "", "gain"},
                 {"matrix", "1,0,0", "", "9 numbers"},
                 {"white-balance-from", "0,0,2", "", "4 numbers"},
                 {"white-balance-from", "0,0,20,20", "", "20"},
                 {"white-balance-from", "-1,0,2,2", "", "no place"},
                 {"black-level", "4095", "", "black"},
                 {"stride", "19", "0", "too short"},
                 {"stride", "21", "0", "too small"},
                 {"parameters", "p,NoSuchThing=1", "p", "NoSuchThing"},
                 {"parameters", "p,BayerAlgType=banana", "p", "BayerAlgType"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(fmt::format("{}={}", c.property, c.value));
        m_element.Set(c.property, c.value);
        for (int round = 0; round < 2; ++round)  // it stays refused until it is changed
            m_element.ExpectError(MakeBuffer(Frame().bytes), c.error);
        m_element.Set(c.property, c.usual);
        ExpectRecovered();
    }
}

TEST_F(GStreamerRefusal, OfPackingsThatADepthDoesNotHave) {
    for (const auto& [format, packing] : {std::pair("rggb", "pfnc"), {"rggb14le", "gige"}, {"rggb16le", "mipi"}}) {
        SCOPED_TRACE(format);
        m_element.Set("packing", packing);
        m_element.SetCaps(format, Frame().view, "RGB");
        m_element.ExpectError(MakeBuffer(Frame().bytes), "packing");
    }
}

}  // namespace
}  // namespace kvx::test
