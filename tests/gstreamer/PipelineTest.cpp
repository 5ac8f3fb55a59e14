// Whole pipelines, with frames of another element.
#include <cstdlib>

#include "gstreamer/FrameElement.h"

namespace kvx::test {
namespace {

constexpr int kWidth = 322, kHeight = 241;

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

/** Smooth colours come back from mosaics of all four orders; a wrong order changes the colours by far more. */
TEST(GStreamerPipeline, RestoresThePictureThatRgb2bayerMosaicked) {
    for (const char* algorithm : {"bilinear", "ipp"})
        for (const char* order : {"rggb", "grbg", "gbrg", "bggr"}) {
            SCOPED_TRACE(fmt::format("{} {}", algorithm, order));
            GstElement* pipeline = gst_parse_launch(
                fmt::format("videotestsrc num-buffers=2 pattern=chroma-zone-plate kx2=2 ky2=3 ! "
                            "video/x-raw,format=ARGB,width={},height={} ! tee name=t ! queue ! "
                            "videoconvert ! video/x-raw,format=RGB ! appsink name=truth sync=false "
                            "t. ! queue ! rgb2bayer ! video/x-bayer,format={} ! kvxdemosaic algorithm={} ! "
                            "video/x-raw,format=RGB ! appsink name=result sync=false",
                            kWidth, kHeight, order, algorithm)
                    .c_str(),
                nullptr);
            ASSERT_TRUE(pipeline);
            gst_element_set_state(pipeline, GST_STATE_PLAYING);
            const std::vector<uint16_t> truth = Picture(pipeline, "truth"), result = Picture(pipeline, "result");
            gst_element_set_state(pipeline, GST_STATE_NULL);
            gst_object_unref(pipeline);
            ASSERT_EQ(truth.size(), size_t{kWidth} * kHeight * 3);
            ASSERT_EQ(result.size(), truth.size());
            double difference = 0;
            for (size_t i = 0; i < truth.size(); ++i) difference += std::abs(truth[i] - result[i]);
            EXPECT_LT(difference / static_cast<double>(truth.size()), 1);
        }
}

}  // namespace
}  // namespace kvx::test
