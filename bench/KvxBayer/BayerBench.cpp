// The Bayer component and the flat functions compared with OpenCV's own call on the same frame.
//
// A name is <job>/<size>/threads:<n>/<who>: "bare" is OpenCV, the reference of the job.
#include <opencv2/imgproc.hpp>

#include "KvxDemosaicing/KvxDemosaicing.h"
#include "support/Frames.h"
#include "support/Records.h"
#include "support/Runs.h"

namespace kvx::bench {
namespace {

/** One conversion: formats, algorithm, and OpenCV's code for the same. */
struct Job {
    const char* name;
    const char *source, *destination;
    int depth;
    int algorithm, code;
    bool toBytes;  // 16-bit source, 8-bit destination
    int padding;   // pixels after each row of both images
};

constexpr Job kJobs[] = {
    {"8to8_bilinear", "BayerRG8", "RGB8", 8, 0, cv::COLOR_BayerBG2RGB, false, 0},
    {"8to8_edge_aware", "BayerRG8", "RGB8", 8, 2, cv::COLOR_BayerBG2RGB_EA, false, 0},
    {"12to12_bilinear", "BayerRG12", "RGB12", 12, 0, cv::COLOR_BayerBG2RGB, false, 0},
    {"12to12_edge_aware", "BayerRG12", "RGB12", 12, 2, cv::COLOR_BayerBG2RGB_EA, false, 0},
    {"12to12_edge_aware_padded", "BayerRG12", "RGB12", 12, 2, cv::COLOR_BayerBG2RGB_EA, false, 32},
    {"12to8_bilinear", "BayerRG12", "RGB8", 12, 0, cv::COLOR_BayerBG2RGB, true, 0},
    {"12to8_edge_aware", "BayerRG12", "RGB8", 12, 2, cv::COLOR_BayerBG2RGB_EA, true, 0},
};

/** Source and destination of a job. */
struct Frame {
    cv::Mat raw, picture;
    _KvxImage src, dst;

    Frame(const Job& job, const Size& size)
        : raw(RandomFrame(size, job.depth, job.padding)),
          picture(BlackImage(size, job.depth == 8 || job.toBytes ? 1 : 2, job.padding)),
          src(RecordOf(raw, job.source)),
          dst(RecordOf(picture, job.destination)) {}
};

void Component(benchmark::State& state, const Job& job, const Size& size) {
    Frame frame(job, size);
    KvxBayer* component = KvxBayer_CreateComponent();
    KvxComponent_SetParamInt(KvxBayer_GetComponent(component), "BayerAlgType", job.algorithm);
    for ([[maybe_unused]] auto _ : state)
        if (KvxBayer_ConvertImage(component, &frame.src, &frame.dst) != 0) state.SkipWithError("refused");
    KvxBayer_DeleteComponent(component);
}

void Flat(benchmark::State& state, const Job& job, const Size& size) {
    Frame frame(job, size);
    const _KvxSize whole{frame.src.width, frame.src.height};
    const _KvxRect region{0, 0, whole.width, whole.height};
    const int srcStep = static_cast<int>(frame.src.lineStep), dstStep = static_cast<int>(frame.dst.lineStep);
    constexpr uint8_t redFirst = 1;
    for ([[maybe_unused]] auto _ : state) {
        uint32_t result = 0;
        if (job.depth == 8)
            result = BayerToRGB_8u_C1C3R(static_cast<uint8_t*>(frame.src.data), region, whole, srcStep, job.depth,
                                         static_cast<uint8_t*>(frame.dst.data), dstStep, redFirst, job.algorithm);
        else if (job.toBytes)
            result = BayerToRGB_16u8u_C1C3R(static_cast<uint16_t*>(frame.src.data), region, whole, srcStep, job.depth,
                                            static_cast<uint8_t*>(frame.dst.data), dstStep, redFirst, job.algorithm);
        else
            result = BayerToRGB_16u_C1C3R(static_cast<uint16_t*>(frame.src.data), region, whole, srcStep, job.depth,
                                          static_cast<uint16_t*>(frame.dst.data), dstStep, redFirst, job.algorithm);
        if (result != 0) state.SkipWithError("refused");
    }
}

/** OpenCV's conversion alone, between unpadded images of the source's sample width. */
void Bare(benchmark::State& state, const Job& job, const Size& size) {
    const cv::Mat source = RandomFrame(size, job.depth);
    cv::Mat result = BlackImage(size, job.depth == 8 ? 1 : 2);
    for ([[maybe_unused]] auto _ : state) cv::cvtColor(source, result, job.code, 0);
}

/** OpenCV's conversion to a 16-bit image, then its reduction to bytes, as a user of OpenCV writes it. */
void BareThenReduced(benchmark::State& state, const Job& job, const Size& size) {
    const cv::Mat source = RandomFrame(size, job.depth);
    cv::Mat words = BlackImage(size, 2), bytes = BlackImage(size, 1);
    for ([[maybe_unused]] auto _ : state) {
        cv::cvtColor(source, words, job.code, 0);
        words.convertTo(bytes, CV_8U, 1.0 / (1 << (job.depth - 8)));
    }
}

const bool s_registered = [] {
    ForEachSetting([](const Size& size, int threads) {
        for (const Job& job : kJobs) {
            AddJob(job, size, threads, "bare", Bare);
            if (job.toBytes) AddJob(job, size, threads, "bare_then_reduced", BareThenReduced);
            if (!job.toBytes || job.algorithm == 0) AddJob(job, size, threads, "component", Component);
            AddJob(job, size, threads, "flat", Flat);
        }
    });
    return true;
}();

}  // namespace
}  // namespace kvx::bench
