// The Bayer component and the flat functions beside the image-processing library's bare call on the same frame.
//
// A name is <job>/<size>/threads:<n>/<who>: "bare" is the peer that the figures of a job are divided by.
#include <opencv2/imgproc.hpp>
#include <vector>

#include "KvxDemosaicing/KvxDemosaicing.h"
#include "support/Runs.h"

namespace kvx::bench {
namespace {

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
    const auto width = static_cast<uint32_t>(size.width), height = static_cast<uint32_t>(size.height);
    bytes.resize(size_t{lineStep} * height);
    _KvxImage image{};
    image.structSize = sizeof image;
    image.structVersion = KVX_IMAGE_VERSION;
    image.pixelType = pixelType;
    image.pixelDepth = depth;
    image.width = width;
    image.height = height;
    image.lineStep = lineStep;
    image.imageSize = lineStep * height;
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
        const auto width = static_cast<uint32_t>(size.width);
        src = Describe(job.srcType, job.depth, size, width * sampleSize + job.padding, raw);
        dst = Describe(job.dstType, job.depth, size, width * 3 * dstSampleSize + job.padding, picture);
        cv::RNG random(1);
        cv::Mat samples(size.height, size.width, sampleSize == 1 ? CV_8UC1 : CV_16UC1, src.data, src.lineStep);
        random.fill(samples, cv::RNG::UNIFORM, 0, 1 << job.depth);
    }
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
}

/** The library's conversion alone, between unpadded images of the source's sample width. */
void Bare(benchmark::State& state, const Job& job, const Size& size) {
    Frame frame({job.name, job.srcType, job.dstType, job.depth, job.algorithm, job.code, false, 0}, size);
    const bool bytes = job.depth == 8;
    const cv::Mat source(size.height, size.width, bytes ? CV_8UC1 : CV_16UC1, frame.src.data, frame.src.lineStep);
    cv::Mat result(size.height, size.width, bytes ? CV_8UC3 : CV_16UC3, frame.dst.data, frame.dst.lineStep);
    for ([[maybe_unused]] auto _ : state) cv::cvtColor(source, result, job.code, 0);
}

/** The conversion into a whole 16-bit frame, then its reduction to bytes: what a user of the library writes. */
void BareThenReduced(benchmark::State& state, const Job& job, const Size& size) {
    Frame frame(job, size);
    const cv::Mat source(size.height, size.width, CV_16UC1, frame.src.data, frame.src.lineStep);
    cv::Mat words(size.height, size.width, CV_16UC3, cv::Scalar::all(0)),
        bytes(size.height, size.width, CV_8UC3, frame.dst.data, frame.dst.lineStep);
    for ([[maybe_unused]] auto _ : state) {
        cv::cvtColor(source, words, job.code, 0);
        words.convertTo(bytes, CV_8U, 1.0 / (1 << (job.depth - 8)));
    }
}

const bool s_registered = [] {
    ForEachSetting([](const Size& size, int threads) {
        for (const Job& job : kJobs) {
            const auto add = [&](const char* who, auto run) {
                Add(job.name, size, threads, who, [=](benchmark::State& state) { run(state, job, size); });
            };
            add("bare", Bare);
            if (job.toBytes) add("bare_then_reduced", BareThenReduced);
            if (!job.toBytes || job.algorithm == 0) add("component", Component);
            add("flat", Flat);
        }
    });
    return true;
}();

}  // namespace
}  // namespace kvx::bench
