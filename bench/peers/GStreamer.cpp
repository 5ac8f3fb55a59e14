#include "peers/GStreamer.h"

#include <gst/check/gstharness.h>

#include <opencv2/imgproc.hpp>
#include <stdexcept>

namespace kvx::peers {
namespace {

struct Harness {
    Harness() {
        gst_init(nullptr, nullptr);
        GstElement* element = gst_element_factory_make("bayer2rgb", nullptr);
        if (!element) throw std::runtime_error("GStreamer has no element bayer2rgb: install gstreamer1.0-plugins-bad");
        m_harness = gst_harness_new_with_element(element, "sink", "src");
        gst_object_unref(element);
    }
    ~Harness() {
        gst_harness_teardown(m_harness);
    }
    Harness(const Harness&) = delete;
    Harness& operator=(const Harness&) = delete;

    GstHarness* m_harness;
};

/** Requests the element's own pool, as a display sink does; otherwise it allocates every buffer. */
GstPadProbeReturn ProposePool(GstPad*, GstPadProbeInfo* info, gpointer size) {
    GstQuery* query = GST_PAD_PROBE_INFO_QUERY(info);
    if (GST_QUERY_TYPE(query) != GST_QUERY_ALLOCATION) return GST_PAD_PROBE_OK;
    gst_query_add_allocation_pool(query, nullptr, GPOINTER_TO_UINT(size), 1, 0);
    return GST_PAD_PROBE_HANDLED;
}

class GStreamerConversion : public Conversion {
public:
    explicit GStreamerConversion(const cv::Mat& frame) : m_size(frame.size()) {
        gst_pad_add_probe(m_element.m_harness->sinkpad, GST_PAD_PROBE_TYPE_QUERY_DOWNSTREAM, ProposePool,
                          GUINT_TO_POINTER(static_cast<guint>(frame.total() * 4)), nullptr);
        const std::string size =
            ",width=" + std::to_string(frame.cols) + ",height=" + std::to_string(frame.rows) + ",framerate=30/1";
        gst_harness_set_src_caps_str(m_element.m_harness, ("video/x-bayer,format=rggb" + size).c_str());
        gst_harness_set_sink_caps_str(m_element.m_harness, ("video/x-raw,format=BGRx" + size).c_str());
        const int step = (frame.cols + 3) / 4 * 4;  // the row padding that the element expects
        cv::Mat padded;
        cv::copyMakeBorder(frame, padded, 0, 0, 0, step - frame.cols, cv::BORDER_CONSTANT);
        m_frame = gst_buffer_new_memdup(padded.data, padded.total());
        Run();  // touches the pool's buffer, so that page faults do not count
    }
    ~GStreamerConversion() override {
        Drop();
        gst_buffer_unref(m_frame);
    }

    void Prepare() override {
        Drop();  // as a sink does: the element reuses the buffer
    }

    void Run() override {
        m_picture = gst_harness_push_and_pull(m_element.m_harness, gst_buffer_ref(m_frame));
        if (!m_picture) throw std::runtime_error("bayer2rgb returned no image");
    }

    cv::Mat Picture() const override {
        GstMapInfo map;
        gst_buffer_map(m_picture, &map, GST_MAP_READ);
        cv::Mat colours;
        cv::cvtColor(cv::Mat(m_size, CV_8UC4, map.data), colours, cv::COLOR_BGRA2BGR);
        gst_buffer_unmap(m_picture, &map);
        return colours;
    }

private:
    void Drop() {
        if (m_picture) gst_buffer_unref(m_picture);
        m_picture = nullptr;
    }

    Harness m_element;
    cv::Size m_size;
    GstBuffer* m_frame = nullptr;
    GstBuffer* m_picture = nullptr;
};

}  // namespace

std::unique_ptr<Conversion> GStreamerBayer2Rgb(const cv::Mat& frame, int) {
    return std::make_unique<GStreamerConversion>(frame);
}

std::string GStreamerVersion() {
    guint major, minor, micro, nano;
    gst_version(&major, &minor, &micro, &nano);
    return std::to_string(major) + '.' + std::to_string(minor) + '.' + std::to_string(micro);
}

}  // namespace kvx::peers
