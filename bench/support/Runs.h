/** Shared by all benchmarks: frame sizes, thread counts, names and the reported figure. */
#pragma once

#include <benchmark/benchmark.h>
#include <omp.h>

#include <opencv2/core.hpp>
#include <string>

namespace kvx::bench {

struct Size {
    int width, height;
};

/** Sets the number of threads of this library and of OpenCV. */
inline void UseThreads(int count) {
    omp_set_num_threads(count);
    cv::setNumThreads(count);
}

inline void CountPixels(benchmark::State& state, const Size& size) {
    state.counters["Mpixel/s"] =
        benchmark::Counter(size.width * 1e-6 * size.height, benchmark::Counter::kIsIterationInvariantRate);
}

/** Calls `body(size, threads)` for both frame sizes with one and two threads. */
template <class Body>
void ForEachSetting(const Body& body) {
    for (const Size& size : {Size{1920, 1200}, Size{4096, 3072}})
        for (const int threads : {1, 2}) body(size, threads);
}

/** Calls `body(size, threads)` for frames from 64x64 to 8K, each with one thread, two, four, and so on up to all. */
template <class Body>
void ForEachScale(const Body& body) {
    const int all = omp_get_num_procs();
    for (const Size& size : {Size{64, 64}, Size{160, 120}, Size{320, 240}, Size{640, 480}, Size{1280, 960},
                             Size{1920, 1200}, Size{4096, 3072}, Size{7680, 4320}}) {
        for (int threads = 1; threads < all; threads *= 2) body(size, threads);
        body(size, all);
    }
}

/** Registers `run(state)` as <job>/<size>/threads:<n>/<who>. It runs with that number of threads. */
template <class Run>
void Add(const std::string& job, const Size& size, int threads, const char* who, Run run) {
    const std::string name = job + "/" + std::to_string(size.width) + "x" + std::to_string(size.height) +
                             "/threads:" + std::to_string(threads) + "/" + who;
    benchmark::RegisterBenchmark(name.c_str(),
                                 [=](benchmark::State& state) {
                                     UseThreads(threads);
                                     run(state);
                                     CountPixels(state, size);
                                 })
        ->UseRealTime()
        ->Unit(benchmark::kMillisecond);
}

/** Registers `run(state, job, size)` under the name of the job. */
template <class Job, class Run>
void AddJob(const Job& job, const Size& size, int threads, const char* who, Run run) {
    Add(job.name, size, threads, who, [=](benchmark::State& state) { run(state, job, size); });
}

}  // namespace kvx::bench
