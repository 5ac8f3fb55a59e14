// The interpolating TrueSense demosaicers compared with OpenCV's bilinear conversion of a Bayer frame of the same size
// to bytes, and with one pass over the same memory.
//
// A name is <job>/<size>/threads:<n>/<who>: "bare" is OpenCV, the reference of the job. The jobs
// truesense_algorithms_<source>to<destination> have all algorithms by number, with the default parameters of the flat
// functions, and the pass over memory. truesense_scaling (12 bits to RGB8) has many sizes and thread counts.
#include <memory>
#include <opencv2/imgproc.hpp>
#include <span>
#include <string>

#include "KvxDemosaicing/KvxTrueSenseFlat.h"
#include "demosaicers/interpolation/TrueSenseBayerLike.h"
#include "demosaicers/interpolation/TrueSenseToRgb.h"
#include "support/Frames.h"
#include "support/MemoryFloor.h"
#include "support/Runs.h"

namespace kvx::bench {
namespace {

struct Job {
    const char* name;
    int depth;
    size_t srcSampleSize, dstSampleSize;
    bool identity;  // colour matrix
};

constexpr Job kJobs[] = {
    {"truesense_12to8", 12, 2, 1, false},
    {"truesense_12to8_identity", 12, 2, 1, true},
    {"truesense_8to8", 8, 1, 1, false},
    {"truesense_12to16", 12, 2, 2, false},
    {"truesense_12to16_identity", 12, 2, 2, true},
};

struct Frame {
    cv::Mat raw, picture;
    tagTrueSenseParam params;

    Frame(const Job& job, const Size& size)
        : raw(RandomFrame(size, job.depth)), picture(BlackImage(size, static_cast<int>(job.dstSampleSize))) {
        TrueSense_DefaultValues(&params);
        if (job.identity) {
            params.RG = params.RB = params.GR = params.GB = params.BR = params.BG = 0;
            params.RR = params.GG = params.BB = 1;
        }
    }
};

template <template <class> class Demosaicer, class T>
void Convert(benchmark::State& state, const Job& job, const Size& size) {
    Frame frame(job, size);
    const auto demosaicer = std::make_unique<Demosaicer<T>>();
    const _KvxSize whole{static_cast<uint32_t>(size.width), static_cast<uint32_t>(size.height)};
    const _KvxRect region{0, 0, whole.width, whole.height};
    const int srcStep = static_cast<int>(frame.raw.step), dstStep = static_cast<int>(frame.picture.step);
    for ([[maybe_unused]] auto _ : state) {
        int result;
        if (job.srcSampleSize == job.dstSampleSize) {
            result = demosaicer->Init(frame.raw.ptr<T>(), region, whole, srcStep, job.depth, frame.picture.ptr<T>(),
                                      dstStep, 0, &frame.params);
            if (result == 0) result = demosaicer->Calculate();
        } else {
            result = demosaicer->InitRGB(frame.raw.ptr<uint16_t>(), region, whole, srcStep, job.depth,
                                         frame.picture.ptr<uint8_t>(), dstStep, 0, &frame.params);
            if (result == 0) result = demosaicer->CalculateRGB();
        }
        if (result != 0) state.SkipWithError("refused");
    }
}

template <template <class> class Demosaicer>
void Convert(benchmark::State& state, const Job& job, const Size& size) {
    (job.srcSampleSize == 1 ? Convert<Demosaicer, uint8_t> : Convert<Demosaicer, uint16_t>)(state, job, size);
}

/** A 12-bit Bayer frame to 16-bit samples and then to bytes, for every job. */
void Bare(benchmark::State& state, const Job&, const Size& size) {
    Frame frame({"", 12, 2, 1, false}, size);
    cv::Mat words = BlackImage(size, 2);
    for ([[maybe_unused]] auto _ : state) {
        cv::cvtColor(frame.raw, words, cv::COLOR_BayerBG2RGB);
        words.convertTo(frame.picture, CV_8U, 1.0 / 16);
    }
}

void Floor(benchmark::State& state, const Job& job, const Size& size) {
    Frame frame(job, size);
    for ([[maybe_unused]] auto _ : state) CopyThrough(frame.raw, frame.picture);
}

struct Algorithm {
    const char* name;
    int number;
};

constexpr Algorithm kAlgorithms[] = {
    {"0_fast", KvxTrueSenseAlgorithm_Fast},
    {"1_simple", KvxTrueSenseAlgorithm_Simple},
    {"2_bayer_like", KvxTrueSenseAlgorithm_BayerLike},
    {"3_kodak_like", KvxTrueSenseAlgorithm_KodakLike},
    {"4_kodak", KvxTrueSenseAlgorithm_Kodak},
};

/** All source depths, each to bytes and to its own depth. */
constexpr Job kDepths[] = {
    {"truesense_algorithms_8to8", 8, 1, 1, false},    {"truesense_algorithms_10to8", 10, 2, 1, false},
    {"truesense_algorithms_12to8", 12, 2, 1, false},  {"truesense_algorithms_14to8", 14, 2, 1, false},
    {"truesense_algorithms_10to10", 10, 2, 2, false}, {"truesense_algorithms_12to12", 12, 2, 2, false},
    {"truesense_algorithms_14to14", 14, 2, 2, false},
};

/** Through the flat functions. */
void ConvertBy(benchmark::State& state, const Algorithm& algorithm, const Job& job, const Size& size) {
    Frame frame(job, size);
    const _KvxSize whole{static_cast<uint32_t>(size.width), static_cast<uint32_t>(size.height)};
    const _KvxRect region{0, 0, whole.width, whole.height};
    const int srcStep = static_cast<int>(frame.raw.step), dstStep = static_cast<int>(frame.picture.step);
    const auto words = frame.raw.ptr<uint16_t>();
    for ([[maybe_unused]] auto _ : state) {
        uint32_t result;
        if (job.srcSampleSize == 1)
            result = TrueSenseToRGB_8u_C1C3R(frame.raw.ptr(), region, whole, srcStep, job.depth, frame.picture.ptr(),
                                             dstStep, 0, &frame.params, algorithm.number, false);
        else if (job.dstSampleSize == 1)
            result = TrueSenseToRGB_16u8u_C1C3R(words, region, whole, srcStep, job.depth, frame.picture.ptr(), dstStep,
                                                0, &frame.params, algorithm.number, false);
        else
            result = TrueSenseToRGB_16u_C1C3R(words, region, whole, srcStep, job.depth, frame.picture.ptr<uint16_t>(),
                                              dstStep, 0, &frame.params, algorithm.number, false);
        if (result != 0) state.SkipWithError(KvxResult_Text(result));
    }
}

void AddAlgorithms(const std::string& name, const Job& job, const Size& size, int threads,
                   std::span<const Algorithm> algorithms) {
    Add(name, size, threads, "floor", [=](benchmark::State& state) { Floor(state, job, size); });
    for (const Algorithm& algorithm : algorithms)
        Add(name, size, threads, algorithm.name,
            [=](benchmark::State& state) { ConvertBy(state, algorithm, job, size); });
}

const bool s_registered = [] {
    ForEachSetting([](const Size& size, int threads) {
        for (const Job& job : kJobs) {
            AddJob(job, size, threads, "bare", Bare);
            AddJob(job, size, threads, "floor", Floor);
            AddJob(job, size, threads, "fast", [](auto&... arguments) { Convert<TrueSenseToRgb>(arguments...); });
            AddJob(job, size, threads, "bayer_like",
                   [](auto&... arguments) { Convert<TrueSenseBayerLike>(arguments...); });
        }
        for (const Job& job : kDepths) AddAlgorithms(job.name, job, size, threads, kAlgorithms);
    });
    ForEachScale([](const Size& size, int threads) {
        constexpr size_t kFastOnes = std::size(kAlgorithms) - 1;  // the plain form of the pipeline would take minutes
        AddAlgorithms("truesense_scaling", kJobs[0], size, threads, std::span(kAlgorithms).first(kFastOnes));
    });
    return true;
}();

}  // namespace
}  // namespace kvx::bench
