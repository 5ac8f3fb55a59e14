// Whole pipelines, with frames that an element of somebody else makes.
#include <cmath>

#include "gstreamer/FrameElement.h"

namespace kvx::test {
namespace {

constexpr int kWidth = 322, kHeight = 241, kBorder = 4;

/** The first picture that arrives at an appsink of this name. */
std::vector<uint16_t> Picture(GstElement* pipeline, const char* sink) {
    GstElement* element = gst_bin_get_by_name(GST_BIN(pipeline), sink);
    GstSample* sample = nullptr;
    g_signal_emit_by_name(element, "try-pull-sample", 10 * GST_SECOND, &sample);
    gst_object_unref(element);
    if (!sample) return {};
    GstVideoInfo info;
    gst_video_info_set_format(&info, GST_VIDEO_FORMAT_RGB, kWidth, kHeight);
    std::vector<uint16_t> samples = Samples(gst_sample_get_buffer(sample), info);
    gst_sample_unref(sample);
    return samples;
}

/** PSNR of a channel inside the border. */
double Psnr(const std::vector<uint16_t>& a, const std::vector<uint16_t>& b, int channel) {
    double sum = 0;
    for (int row = kBorder; row < kHeight - kBorder; ++row)
        for (int column = kBorder; column < kWidth - kBorder; ++column) {
            const size_t index = (row * size_t{kWidth} + column) * 3 + channel;
            sum += (a[index] - b[index]) * (a[index] - b[index]);
        }
    return 10 * std::log10(255.0 * 255 * (kHeight - 2 * kBorder) * (kWidth - 2 * kBorder) / sum);
}

/** Smooth colours and bars come back from the mosaics of all four orders; with another order, 48 and 25 are 10. */
TEST(GStreamerPipeline, BringsBackWhatRgb2bayerTookApart) {
    for (const auto& [pattern, decibels] : {std::pair("chroma-zone-plate kx2=2 ky2=3", 48), {"smpte75", 25}})
        for (const char* algorithm : {"bilinear", "edge-aware", "ipp"})
            for (const char* order : {"rggb", "grbg", "gbrg", "bggr"}) {
                SCOPED_TRACE(fmt::format("{} {} {}", pattern, algorithm, order));
                GstElement* pipeline = gst_parse_launch(
                    fmt::format("videotestsrc num-buffers=2 pattern={} ! "
                                "video/x-raw,format=ARGB,width={},height={} ! tee name=t ! queue ! "
                                "videoconvert ! video/x-raw,format=RGB ! appsink name=truth sync=false "
                                "t. ! queue ! rgb2bayer ! video/x-bayer,format={} ! kvxdemosaic algorithm={} ! "
                                "video/x-raw,format=RGB ! appsink name=result sync=false",
                                pattern, kWidth, kHeight, order, algorithm)
                        .c_str(),
                    nullptr);
                ASSERT_TRUE(pipeline);
                gst_element_set_state(pipeline, GST_STATE_PLAYING);
                const std::vector<uint16_t> truth = Picture(pipeline, "truth");
                const std::vector<uint16_t> result = Picture(pipeline, "result");
                gst_element_set_state(pipeline, GST_STATE_NULL);
                gst_object_unref(pipeline);
                ASSERT_EQ(truth.size(), size_t{kWidth} * kHeight * 3);
                ASSERT_EQ(result.size(), truth.size());
                for (int channel = 0; channel < 3; ++channel)
                    EXPECT_GT(Psnr(truth, result, channel), decibels) << "channel " << channel;
            }
}

}  // namespace
}  // namespace kvx::test
