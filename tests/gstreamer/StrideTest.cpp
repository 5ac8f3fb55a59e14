#include <gst/base/gstbasetransform.h>
#include <gtest/gtest.h>

#include "gstreamer/FrameElement.h"

namespace kvx::test {
namespace {

using frame::TestFrame;

/** `padding` bytes behind each row, and the frame's own padding that the element shall find. */
TestFrame FrameWithStride(const char* name, uint32_t width, uint32_t height, size_t stride) {
    const frame::Format format = frame::FormatByName(name);
    return frame::MakeNoise(format, width, height, 1, stride - frame::RowBytes(format, width));
}

class EveryWidth : public testing::TestWithParam<uint32_t> {};

TEST_P(EveryWidth, IsReadWithoutPaddingAndPaddedToFour) {
    const uint32_t width = GetParam();
    for (const char* name : {"rggb", "grbg12le", "BayerGB10p", "CFA_BG_GR_12mipi", "SCF1WBWG10"}) {
        const size_t rowBytes = frame::RowBytes(frame::FormatByName(name), width);
        for (const size_t stride : {rowBytes, (rowBytes + 3) / 4 * 4})
            for (const char* picture : {"RGB", "BGRx", "ARGB64_BE"})
                for (const bool isLastRowShort : {false, true}) {
                    SCOPED_TRACE(fmt::format("{} {} stride {} to {}", name, width, stride, picture));
                    TestFrame frame = FrameWithStride(name, width, 6, stride);
                    if (isLastRowShort) frame.bytes.resize(frame.bytes.size() - (stride - rowBytes));
                    FrameElement element;
                    const frame::Layout layout = frame.view.format.layout;
                    if (layout == frame::Layout::Pfnc) g_object_set(element.Element(), "packing", 4, nullptr);
                    if (layout == frame::Layout::Mipi) g_object_set(element.Element(), "packing", 6, nullptr);
                    const std::string caps = frame::Name(frame::Unpacked(frame.view.format));
                    element.SetCaps(frame.view, picture, caps.c_str());
                    const Buffer result = element.Convert(MakeBuffer(frame.bytes));
                    ASSERT_TRUE(result) << element.Error();
                    EXPECT_EQ(Samples(result.get(), picture, width, 6), ExpectedSamples(frame.view, picture));
                }
    }
}
INSTANTIATE_TEST_SUITE_P(GStreamerStride, EveryWidth, testing::Values(1, 3, 510, 2446));

TEST(GStreamerStride, OfPackedFramesMayBeWithinAByte) {
    const frame::Format format = frame::FormatByName("BayerRG10p");
    const TestFrame words = frame::MakeNoise(frame::FormatByName("BayerRG10"), 37, 9);
    std::vector<uint8_t> packed(frame::ImageBytes(format, 37, 9, 0));
    ASSERT_LT(packed.size(), frame::RowBytes(format, 37) * 9);
    frame::PackSamples(*frame::PackingOf(format), reinterpret_cast<const uint16_t*>(words.bytes.data()), 0, 37 * 9,
                       packed.data(), packed.size());
    FrameElement element("packing=pfnc");
    element.SetCaps(words.view, "RGB");
    const Buffer result = element.Convert(MakeBuffer(packed));
    ASSERT_TRUE(result) << element.Error();
    EXPECT_EQ(Samples(result.get(), "RGB", 37, 9), ExpectedSamples(words.view, "RGB"));
}

TEST(GStreamerStride, IsThePropertys) {
    const TestFrame frame = FrameWithStride("gbrg12le", 30, 8, 97);
    FrameElement element("stride=97");
    element.SetCaps(frame.view, "BGR");
    const Buffer result = element.Convert(MakeBuffer(frame.bytes));
    ASSERT_TRUE(result) << element.Error();
    EXPECT_EQ(Samples(result.get(), "BGR", 30, 8), ExpectedSamples(frame.view, "BGR"));
}

void AddMeta(GstBuffer* buffer, GstVideoFormat format, uint32_t width, uint32_t height, size_t offset, int stride) {
    gsize offsets[GST_VIDEO_MAX_PLANES] = {offset};
    gint strides[GST_VIDEO_MAX_PLANES] = {stride};
    gst_buffer_add_video_meta_full(buffer, GST_VIDEO_FRAME_FLAG_NONE, format, width, height, 1, offsets, strides);
}

TEST(GStreamerStride, IsTheVideoMetas) {
    for (const size_t offset : {0, 1, 13})
        for (const bool isUpsideDown : {false, true}) {
            SCOPED_TRACE(fmt::format("offset {}{}", offset, isUpsideDown ? " from below" : ""));
            const TestFrame frame = FrameWithStride("rggb12le", 23, 7, 61);
            std::vector<uint8_t> bytes(offset, 0x55);
            bytes.insert(bytes.end(), frame.bytes.begin(), frame.bytes.end());
            Buffer buffer = MakeBuffer(bytes);
            AddMeta(buffer.get(), GST_VIDEO_FORMAT_ENCODED, 23, 7, offset + (isUpsideDown ? 6 * 61 : 0),
                    isUpsideDown ? -61 : 61);
            FrameElement element("stride=77");  // the meta knows better
            element.SetCaps(frame.view, "RGB");
            const Buffer result = element.Convert(std::move(buffer));
            ASSERT_TRUE(result) << element.Error();
            const frame::SourceView view = isUpsideDown ? frame::FlippedVertically(frame.view) : frame.view;
            EXPECT_EQ(Samples(result.get(), "RGB", 23, 7), ExpectedSamples(view, "RGB"));
        }
}

TEST(GStreamerStride, OfAPictureIsTheVideoMetasAndNothingElseIsWritten) {
    for (const char* picture : {"RGB", "BGRx", "ABGR64_BE"}) {
        SCOPED_TRACE(picture);
        const TestFrame frame = FrameWithStride("bggr", 15, 6, 15);
        FrameElement element;
        element.SetCaps(frame.view, picture);
        ASSERT_TRUE(element.Convert(MakeBuffer(frame.bytes)));  // after it, caps are known
        const GstVideoFormat format = gst_video_format_from_string(picture);
        const size_t rowBytes = 15u * GST_VIDEO_FORMAT_INFO_PSTRIDE(gst_video_format_get_info(format), 0);
        GuardedImage image(0, 15, 6, rowBytes, rowBytes + 11, 3);
        const size_t size = 6 * (rowBytes + 11) + 5;
        const Buffer target(gst_buffer_new_wrapped_full(static_cast<GstMemoryFlags>(0), image.Row(0) - 5, size, 0, size,
                                                        nullptr, nullptr));
        AddMeta(target.get(), format, 15, 6, 5, static_cast<int>(rowBytes + 11));
        auto* base = GST_BASE_TRANSFORM(element.Element());
        const Buffer source = MakeBuffer(frame.bytes);
        ASSERT_EQ(GST_BASE_TRANSFORM_GET_CLASS(base)->transform(base, source.get(), target.get()), GST_FLOW_OK);
        EXPECT_EQ(Samples(target.get(), picture, 15, 6), ExpectedSamples(frame.view, picture));
        EXPECT_TRUE(image.GuardsIntact());
    }
}

}  // namespace
}  // namespace kvx::test
