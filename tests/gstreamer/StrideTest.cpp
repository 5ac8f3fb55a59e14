#include "gstreamer/FrameElement.h"

namespace kvx::test {
namespace {

frame::TestFrame FrameWithStride(const char* name, uint32_t width, uint32_t height, size_t stride) {
    const frame::Format format = frame::FormatByName(name);
    return frame::MakeNoise(format, width, height, 1, stride - frame::RowBytes(format, width));
}

TEST(GStreamerStride, IsReadWithoutPaddingAndPaddedToFour) {
    const char* const cases[][3] = {{"rggb", "rggb", "none"},
                                    {"grbg12le", "grbg12le", "none"},
                                    {"BayerGB10p", "gbrg10le", "pfnc"},
                                    {"CFA_BG_GR_12mipi", "bggr12le", "mipi"},
                                    {"SCF1WBWG10", "SCF1WBWG10", "none"}};
    for (const auto& [format, caps, packing] : cases)
        for (const uint32_t width : {1, 3, 510, 2446}) {
            const size_t rowBytes = frame::RowBytes(frame::FormatByName(format), width);
            for (const size_t stride : {rowBytes, (rowBytes + 3) / 4 * 4})
                for (const bool isLastRowShort : {false, true}) {
                    SCOPED_TRACE(fmt::format("{} pixels of {}, stride {}", width, format, stride));
                    frame::TestFrame frame = FrameWithStride(format, width, 6, stride);
                    if (isLastRowShort) frame.bytes.resize(frame.bytes.size() - (stride - rowBytes));
                    FrameElement element(std::string("packing=") + packing);
                    element.SetCaps(caps, frame.view, "ARGB64_BE");
                    element.ExpectPicture(MakeBuffer(frame.bytes), frame.view);
                }
        }
}

/** The size decides; a frame that fits both has rows of whole bytes. */
TEST(GStreamerStride, OfPackedFramesMayBeWithinAByte) {
    const frame::Format format = frame::FormatByName("BayerRG10p");
    for (const uint32_t side : {37, 3}) {
        const frame::TestFrame words = frame::MakeNoise(frame::FormatByName("BayerRG10"), side, side);
        const frame::TestFrame whole = frame::MakeNoise(format, side, side);  // of the same samples
        std::vector<uint8_t> packed(frame::ImageBytes(format, side, side, 0));
        frame::PackSamples(*frame::PackingOf(format), reinterpret_cast<const uint16_t*>(words.bytes.data()), 0,
                           size_t{side} * side, packed.data(), packed.size());
        FrameElement element("packing=pfnc");
        element.SetCaps("rggb10le", words.view, "RGB");
        element.ExpectPicture(MakeBuffer(side == 3 ? whole.bytes : packed), words.view);
    }
}

TEST(GStreamerStride, IsThePropertysOrTheVideoMetas) {
    const frame::TestFrame frame = FrameWithStride("rggb12le", 23, 7, 61);
    FrameElement element("stride=61");
    element.SetCaps("rggb12le", frame.view, "RGB");
    element.ExpectPicture(MakeBuffer(frame.bytes), frame.view);
    element.Set("stride", "77");  // a meta knows better
    for (const size_t offset : {0, 1, 13})
        for (const bool isUpsideDown : {false, true}) {
            SCOPED_TRACE(fmt::format("offset {}{}", offset, isUpsideDown ? " from below" : ""));
            std::vector<uint8_t> bytes(offset, 0x55);
            bytes.insert(bytes.end(), frame.bytes.begin(), frame.bytes.end());
            Buffer buffer = MakeBuffer(bytes);
            gsize offsets[GST_VIDEO_MAX_PLANES] = {offset + (isUpsideDown ? 6 * 61 : 0)};
            gint strides[GST_VIDEO_MAX_PLANES] = {isUpsideDown ? -61 : 61};
            gst_buffer_add_video_meta_full(buffer.get(), GST_VIDEO_FRAME_FLAG_NONE, GST_VIDEO_FORMAT_ENCODED, 23, 7, 1,
                                           offsets, strides);
            element.ExpectPicture(std::move(buffer), isUpsideDown ? frame::FlippedVertically(frame.view) : frame.view);
        }
}

}  // namespace
}  // namespace kvx::test
