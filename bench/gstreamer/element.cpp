// Compares kvxdemosaic with GStreamer's bayer2rgb in the same pipelines and the same run:
//     kvx_gstreamer_bench FRAMES [IMAGE...]
// Times are medians over rounds in which every element has its turn. With images, also measures the quality.
#include <fmt/format.h>
#include <gst/gst.h>
#include <gst/video/video.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <map>
#include <opencv2/imgproc.hpp>
#include <string>
#include <vector>

#include "KvxFrame/Converter.h"
#include "gstreamer/Element.h"
#include "quality/Cpsnr.h"
#include "tools/files/InputFile.h"
#include "tools/files/PictureDecoder.h"
#include "tools/frames/Formats.h"
#include "tools/frames/Mosaic.h"
#include "tools/scene/Scene.h"

namespace {

using namespace kvx::tool;

constexpr int kRounds = 9;
constexpr int kWarmUp = 3;
constexpr int kBorder = 8;

/** appsrc ! an element ! a sink. */
class Pipeline {
public:
    Pipeline(const std::string& element, const char* format, cv::Size size, const char* sink) {
        GError* error = nullptr;
        m_pipeline =
            gst_parse_launch(fmt::format("appsrc name=in format=time block=true max-bytes=1 "
                                         "caps=video/x-bayer,format=rggb,width={},height={},framerate=25/1 ! {} ! "
                                         "video/x-raw,format={} ! {} name=out sync=false",
                                         size.width, size.height, element, format, sink)
                                 .c_str(),
                             &error);
        if (error) {
            fmt::print(stderr, "{}\n", error->message);
            std::exit(1);
        }
        m_source = gst_bin_get_by_name(GST_BIN(m_pipeline), "in");
        m_sink = gst_bin_get_by_name(GST_BIN(m_pipeline), "out");
        gst_element_set_state(m_pipeline, GST_STATE_PLAYING);
    }
    ~Pipeline() {
        gst_element_set_state(m_pipeline, GST_STATE_NULL);
        gst_object_unref(m_source);
        gst_object_unref(m_sink);
        gst_object_unref(m_pipeline);
    }
    Pipeline(const Pipeline&) = delete;
    Pipeline& operator=(const Pipeline&) = delete;

    void Push(GstBuffer* frame, int count = 1) {
        for (int index = 0; index < count; ++index) {
            GstFlowReturn result = GST_FLOW_OK;
            g_signal_emit_by_name(m_source, "push-buffer", frame, &result);
        }
    }
    /** Waits until all frames have arrived. */
    void Finish() {
        GstFlowReturn result = GST_FLOW_OK;
        g_signal_emit_by_name(m_source, "end-of-stream", &result);
        GstBus* bus = gst_element_get_bus(m_pipeline);
        GstMessage* message = gst_bus_timed_pop_filtered(
            bus, GST_CLOCK_TIME_NONE, static_cast<GstMessageType>(GST_MESSAGE_EOS | GST_MESSAGE_ERROR));
        if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR) {
            fmt::print(stderr, "the pipeline failed\n");
            std::exit(1);
        }
        gst_message_unref(message);
        gst_object_unref(bus);
    }
    GstElement* Sink() {
        return m_sink;
    }

private:
    GstElement* m_pipeline;
    GstElement* m_source;
    GstElement* m_sink;
};

struct Contestant {
    std::string name;
    std::string element;
};

std::vector<Contestant> Contestants(const std::vector<int>& threadCounts) {
    std::vector<Contestant> contestants = {{"bayer2rgb", "bayer2rgb"}};
    for (const int threads : threadCounts) {
        for (const kvx::frame::Algorithm& algorithm : kvx::frame::AlgorithmsOf(kvx::frame::Family::Bayer)) {
            contestants.push_back({fmt::format("kvxdemosaic {}, threads {}", algorithm.name, threads),
                                   fmt::format("kvxdemosaic algorithm={} n-threads={}", algorithm.name, threads)});
        }
    }
    return contestants;
}

GstBuffer* MakeFrame(const Picture& picture) {
    const RawFrame frame = MakeMosaic(picture, RequireFormat("rggb"));
    return gst_buffer_new_memdup(frame.samples.data, frame.samples.total());
}

/** Milliseconds per frame. */
double Time(const Contestant& contestant, const char* format, cv::Size size, GstBuffer* frame, int count) {
    Pipeline pipeline(contestant.element, format, size, "fakesink");
    pipeline.Push(frame, kWarmUp);
    const auto start = std::chrono::steady_clock::now();
    pipeline.Push(frame, count);
    pipeline.Finish();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count() / count;
}

void CompareSpeed(int count) {
    const cv::Size size(1920, 1200);
    Picture scene = DrawScene();
    cv::resize(scene.pixels, scene.pixels, size);
    GstBuffer* frame = MakeFrame(scene);
    for (const char* format : {"RGBx", "BGRA"}) {
        const std::vector<Contestant> contestants = Contestants({1, 2});
        std::map<std::string, std::vector<double>> times;
        for (int round = 0; round < kRounds; ++round) {
            for (const Contestant& contestant : contestants) {
                times[contestant.name].push_back(Time(contestant, format, size, frame, count));
            }
        }
        double peer = 0;
        for (const Contestant& contestant : contestants) {
            std::vector<double>& all = times[contestant.name];
            std::ranges::sort(all);
            const double median = all[kRounds / 2];
            peer = peer == 0 ? median : peer;
            fmt::print("rggb {}x{} to {}: {:<36} {:6.2f} ms per frame, {:.2f} of bayer2rgb\n", size.width, size.height,
                       format, contestant.name, median, median / peer);
        }
    }
    gst_buffer_unref(frame);
}

cv::Mat Restore(const Contestant& contestant, const Picture& original) {
    const cv::Size size = original.pixels.size();
    Pipeline pipeline(contestant.element, "BGRx", size, "appsink");
    GstBuffer* frame = MakeFrame(original);
    pipeline.Push(frame);
    gst_buffer_unref(frame);
    GstSample* sample = nullptr;
    g_signal_emit_by_name(pipeline.Sink(), "pull-sample", &sample);
    GstMapInfo map;
    gst_buffer_map(gst_sample_get_buffer(sample), &map, GST_MAP_READ);
    cv::Mat picture;
    cv::cvtColor(cv::Mat(size, CV_8UC4, map.data), picture, cv::COLOR_BGRA2BGR);
    gst_buffer_unmap(gst_sample_get_buffer(sample), &map);
    gst_sample_unref(sample);
    return picture;
}

void CompareQuality(const std::vector<std::string>& files) {
    for (const Contestant& contestant : Contestants({0})) {
        double sum = 0;
        for (const std::string& file : files) {
            const Picture original = DecodePicture(ReadInput(file), file);
            sum += kvx::quality::Compare(original.pixels, Restore(contestant, original), kBorder).colour;
        }
        fmt::print("{:<36} {:.2f} dB, mean over {} images\n", contestant.name, sum / static_cast<double>(files.size()),
                   files.size());
    }
}

}  // namespace

int main(int argc, char** argv) {
    gst_init(&argc, &argv);
    GST_ELEMENT_REGISTER(kvxdemosaic, nullptr);
    CompareSpeed(argc > 1 ? std::max(1, std::atoi(argv[1])) : 50);
    if (argc > 2) {
        CompareQuality({argv + 2, argv + argc});
    }
}
