// The Bayer component and the flat functions beside the image-processing library's bare call on the same frame.
//
// A name is <job>/<size>/threads:<n>/<who>: "bare" is the peer that the figures of a job are divided by.
#include <benchmark/benchmark.h>
#include <omp.h>

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <string>
#include <vector>

#include "KvxDemosaicing/KvxDemosaicing.h"

namespace {

struct Size {
    uint32_t width, height;
};

/** One conversion: formats, algorithm, and the library's code for the same. */
struct Job {
    const char* name;
    uint32_t srcType, dstType;
    uint32_t depth;
    int algorithm, code;
    bool toBytes;      // 16-bit source, 8-bit destination
    uint32_t padding;  // bytes after each row of both images
};

constexpr Job kJobs[] = {
    {"8to8_bilinear", KvxFormat_BayerRG8, KvxFormat_RGB8, 8, 0, cv::COLOR_BayerBG2RGB, false, 0},
    {"8to8_edge_aware", KvxFormat_BayerRG8, KvxFormat_RGB8, 8, 2, cv::COLOR_BayerBG2RGB_EA, false, 0},
    {"12to12_bilinear", KvxFormat_BayerRG12, KvxFormat_RGB12, 12, 0, cv::COLOR_BayerBG2RGB, false, 0},
    {"12to12_edge_aware", KvxFormat_BayerRG12, KvxFormat_RGB12, 12, 2, cv::COLOR_BayerBG2RGB_EA, false, 0},
    {"12to12_edge_aware_padded", KvxFormat_BayerRG12, KvxFormat_RGB12, 12, 2, cv::COLOR_BayerBG2RGB_EA, false, 64},
    {"12to8_bilinear", KvxFormat_BayerRG12, KvxFormat_RGB8, 12, 0, cv::COLOR_BayerBG2RGB, true, 0},
    {"12to8_edge_aware", KvxFormat_BayerRG12, KvxFormat_RGB8, 12, 2, cv::COLOR_BayerBG2RGB_EA, true, 0},
};

_KvxImage Describe(uint32_t pixelType, uint32_t depth, const Size& size, uint32_t lineStep,
                   std::vector<uint8_t>& bytes) {
    bytes.resize(size_t{lineStep} * size.height);
    _KvxImage image{};
    image.structSize = sizeof image;
    image.structVersion = KVX_IMAGE_VERSION;
    image.pixelType = pixelType;
    image.pixelDepth = depth;
    image.width = size.width;
    image.height = size.height;
    image.lineStep = lineStep;
    image.imageSize = lineStep * size.height;
    image.data = bytes.data();
    return image;
}

/** Source and destination of a job. */
struct Frame {
    std::vector<uint8_t> raw, picture;
    _KvxImage src, dst;

    Frame(const Job& job, const Size& size) {
        const uint32_t sampleSize = job.depth == 8 ? 1 : 2;
        const uint32_t dstSampleSize = job.toBytes ? 1 : sampleSize;
        src = Describe(job.srcType, job.depth, size, size.width * sampleSize + job.padding, raw);
        dst = Describe(job.dstType, job.depth, size, size.width * 3 * dstSampleSize + job.padding, picture);
        cv::RNG random(1);
        cv::Mat samples(static_cast<int>(size.height), static_cast<int>(size.width),
                        sampleSize == 1 ? CV_8UC1 : CV_16UC1, src.data, src.lineStep);
        random.fill(samples, cv::RNG::UNIFORM, 0, 1 << job.depth);
    }
};

void UseThreads(int count) {
    omp_set_num_threads(count);
    cv::setNumThreads(count);
}

void CountPixels(benchmark::State& state, const Size& size) {
    state.counters["Mpixel/s"] =
        benchmark::Counter(size.width * 1e-6 * size.height, benchmark::Counter::kIsIterationInvariantRate);
}

void Component(benchmark::State& state, const Job& job, const Size& size, int threads) {
    Frame frame(job, size);
    UseThreads(threads);
    KvxBayer* component = KvxBayer_CreateComponent();
    KvxComponent_SetParamInt(KvxBayer_GetComponent(component), "BayerAlgType", job.algorithm);
    for ([[maybe_unused]] auto _ : state)
        if (KvxBayer_ConvertImage(component, &frame.src, &frame.dst) != 0) state.SkipWithError("refused");
    KvxBayer_DeleteComponent(component);
    CountPixels(state, size);
}

void Flat(benchmark::State& state, const Job& job, const Size& size, int threads) {
    Frame frame(job, size);
    UseThreads(threads);
    const _KvxRect region{0, 0, size.width, size.height};
    const _KvxSize whole{size.width, size.height};
    const int srcStep = static_cast<int>(frame.src.lineStep), dstStep = static_cast<int>(frame.dst.lineStep);
    const int depth = static_cast<int>(job.depth);
    constexpr uint8_t redFirst = 1;
    for ([[maybe_unused]] auto _ : state) {
        uint32_t result = 0;
        if (job.depth == 8)
            result = BayerToRGB_8u_C1C3R(static_cast<uint8_t*>(frame.src.data), region, whole, srcStep, depth,
                                         static_cast<uint8_t*>(frame.dst.data), dstStep, redFirst, job.algorithm);
        else if (job.toBytes)
            result = BayerToRGB_16u8u_C1C3R(static_cast<uint16_t*>(frame.src.data), region, whole, srcStep, depth,
                                            static_cast<uint8_t*>(frame.dst.data), dstStep, redFirst, job.algorithm);
        else
            result = BayerToRGB_16u_C1C3R(static_cast<uint16_t*>(frame.src.data), region, whole, srcStep, depth,
                                          static_cast<uint16_t*>(frame.dst.data), dstStep, redFirst, job.algorithm);
        if (result != 0) state.SkipWithError("refused");
    }
    CountPixels(state, size);
}

/** The library's conversion alone, between unpadded images of the source's sample width. */
void Bare(benchmark::State& state, const Job& job, const Size& size, int threads) {
    Frame frame({job.name, job.srcType, job.dstType, job.depth, job.algorithm, job.code, false, 0}, size);
    UseThreads(threads);
    const int rows = static_cast<int>(size.height), columns = static_cast<int>(size.width);
    const bool bytes = job.depth == 8;
    const cv::Mat source(rows, columns, bytes ? CV_8UC1 : CV_16UC1, frame.src.data, frame.src.lineStep);
    cv::Mat result(rows, columns, bytes ? CV_8UC3 : CV_16UC3, frame.dst.data, frame.dst.lineStep);
    for ([[maybe_unused]] auto _ : state) cv::cvtColor(source, result, job.code, 0);
    CountPixels(state, size);
}

/** The conversion into a whole 16-bit frame, then its reduction to bytes: what a user of the library writes. */
void BareThenReduced(benchmark::State& state, const Job& job, const Size& size, int threads) {
    Frame frame(job, size);
    UseThreads(threads);
    const int rows = static_cast<int>(size.height), columns = static_cast<int>(size.width);
    const cv::Mat source(rows, columns, CV_16UC1, frame.src.data, frame.src.lineStep);
    cv::Mat words(rows, columns, CV_16UC3), bytes(rows, columns, CV_8UC3, frame.dst.data, frame.dst.lineStep);
    for ([[maybe_unused]] auto _ : state) {
        cv::cvtColor(source, words, job.code, 0);
        words.convertTo(bytes, CV_8U, 1.0 / (1 << (job.depth - 8)));
    }
    CountPixels(state, size);
}

const bool s_registered = [] {
    for (const Size& size : {Size{1920, 1200}, Size{4096, 3072}})
        for (const int threads : {1, 2})
            for (const Job& job : kJobs) {
                const std::string stem = std::string(job.name) + "/" + std::to_string(size.width) + "x" +
                                         std::to_string(size.height) + "/threads:" + std::to_string(threads) + "/";
                const auto add = [&](const char* who, auto run) {
                    benchmark::RegisterBenchmark((stem + who).c_str(), run, job, size, threads)
                        ->UseRealTime()
                        ->Unit(benchmark::kMillisecond);
                };
                add("bare", Bare);
                if (job.toBytes) add("bare_then_reduced", BareThenReduced);
                if (!job.toBytes || job.algorithm == 0) add("component", Component);
                add("flat", Flat);
            }
    return true;
}();

}  // namespace
