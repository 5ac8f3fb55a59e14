// The interpolating TrueSense demosaicers beside the image-processing library's bilinear conversion of a Bayer frame of
// the same size to bytes, and beside one pass over the same memory.
//
// A name is <job>/<size>/threads:<n>/<who>: "bare" is the peer that the figures of a job are divided by. The job
// truesense_algorithms has all algorithms by number, with the default parameters of the flat functions; there the peer
// is the first, the default.
#include <memory>
#include <opencv2/imgproc.hpp>
#include <vector>

#include "KvxDemosaicing/KvxTrueSenseFlat.h"
#include "demosaicers/TrueSenseBayerLike.h"
#include "demosaicers/TrueSenseToRgb.h"
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
        : raw(size.height, size.width, job.srcSampleSize == 1 ? CV_8UC1 : CV_16UC1),
          picture(size.height, size.width, job.dstSampleSize == 1 ? CV_8UC3 : CV_16UC3) {
        cv::RNG random(1);
        random.fill(raw, cv::RNG::UNIFORM, 0, 1 << job.depth);
        picture = cv::Scalar::all(0);
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

/** A 12-bit Bayer frame through 16-bit samples to bytes, whatever the job. */
void Bare(benchmark::State& state, const Job&, const Size& size) {
    Frame frame({"", 12, 2, 1, false}, size);
    cv::Mat words(size.height, size.width, CV_16UC3, cv::Scalar::all(0));  // touched: page faults are not its business
    for ([[maybe_unused]] auto _ : state) {
        cv::cvtColor(frame.raw, words, cv::COLOR_BayerBG2RGB);
        words.convertTo(frame.picture, CV_8U, 1.0 / 16);
    }
}

/** Reads the source once and writes the destination once. */
void Floor(benchmark::State& state, const Job& job, const Size& size) {
    Frame frame(job, size);
    const size_t out = frame.picture.step, in = frame.raw.step;
    for ([[maybe_unused]] auto _ : state) {
#pragma omp parallel for
        for (int row = 0; row < size.height; ++row) {
            const uint8_t* from = frame.raw.ptr(row);
            uint8_t* to = frame.picture.ptr(row);
            for (size_t done = 0; done < out; done += in) std::memcpy(to + done, from, std::min(in, out - done));
        }
    }
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

/** A 12-bit frame to bytes, as a caller has it. */
void ConvertBy(const Algorithm& algorithm, benchmark::State& state, const Size& size) {
    Frame frame({"", 12, 2, 1, false}, size);
    const _KvxSize whole{static_cast<uint32_t>(size.width), static_cast<uint32_t>(size.height)};
    for ([[maybe_unused]] auto _ : state) {
        const uint32_t result = TrueSenseToRGB_16u8u_C1C3R(
            frame.raw.ptr<uint16_t>(), {0, 0, whole.width, whole.height}, whole, static_cast<int>(frame.raw.step), 12,
            frame.picture.ptr(), static_cast<int>(frame.picture.step), 0, &frame.params, algorithm.number, false);
        if (result != 0) state.SkipWithError("the library refuses: not every algorithm is in it yet");
    }
}

const bool s_registered = [] {
    ForEachSetting([](const Size& size, int threads) {
        for (const Job& job : kJobs) {
            const auto add = [&](const char* who, auto run) {
                Add(job.name, size, threads, who, [=](benchmark::State& state) { run(state, job, size); });
            };
            add("bare", Bare);
            add("floor", Floor);
            add("fast", Convert<TrueSenseToRgb>);
            add("bayer_like", Convert<TrueSenseBayerLike>);
        }
        for (const Algorithm& algorithm : kAlgorithms)
            Add("truesense_algorithms", size, threads, algorithm.name,
                [=](benchmark::State& state) { ConvertBy(algorithm, state, size); });
    });
    return true;
}();

}  // namespace
}  // namespace kvx::bench
