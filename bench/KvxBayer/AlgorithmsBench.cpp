// All Bayer algorithms at all depths, algorithms of other libraries, and one pass over the same memory, on a drawn
// frame.
//
// The jobs bayer_<source>to<destination> have two frame sizes, bayer_scaling (8 bits to RGB8) many sizes and thread
// counts. This library, OpenCV and GStreamer run complete conversions, from samples to an interleaved image. LibRaw
// runs its interpolation only, on its own copy of the frame. LibRaw always computes in 16 bits, so it is in the 12-bit
// job only. A library that is not available shows an error.
#include <string>
#include <vector>

#include "KvxDemosaicing/KvxDemosaicing.h"
#include "support/Frames.h"
#include "support/MemoryFloor.h"
#include "support/PeerRuns.h"
#include "support/Records.h"
#include "support/Runs.h"

namespace kvx::bench {
namespace {

struct Algorithm {
    const char* name;
    int number;
};

constexpr Algorithm kAlgorithms[] = {
    {"bilinear", KvxBayerAlgorithm_Bilinear},
    {"ipp", KvxBayerAlgorithm_IPP},
    {"edge-aware", KvxBayerAlgorithm_EdgeAware},
};

struct Job {
    int depth, dstDepth;

    std::string Name() const {
        return "bayer_" + std::to_string(depth) + "to" + std::to_string(dstDepth);
    }
};

constexpr Job kJobs[] = {{8, 8}, {10, 8}, {12, 8}, {14, 8}, {16, 8}, {10, 10}, {12, 12}, {14, 14}, {16, 16}};

/** Uses the component, which keeps its memory; from words to bytes a flat function, since the component is bilinear. */
void Ours(benchmark::State& state, const Algorithm& algorithm, const Job& job, const Size& size) {
    const cv::Mat frame = DrawnFrame(size, job.depth), picture = BlackImage(size, job.dstDepth == 8 ? 1 : 2);
    _KvxImage src = RecordOf(frame, ("BayerRG" + std::to_string(job.depth)).c_str());
    _KvxImage dst = RecordOf(picture, ("RGB" + std::to_string(job.dstDepth)).c_str());
    KvxBayer* component = KvxBayer_CreateComponent();
    KvxComponent_SetParamInt(KvxBayer_GetComponent(component), "BayerAlgType", algorithm.number);
    const bool byComponent = job.depth == job.dstDepth;
    for ([[maybe_unused]] auto _ : state) {
        const uint32_t result =
            byComponent ? KvxBayer_ConvertImage(component, &src, &dst) : BayerToColor(&src, &dst, algorithm.number);
        if (result != 0) state.SkipWithError(KvxResult_Text(result));
    }
    KvxBayer_DeleteComponent(component);
}

void Floor(benchmark::State& state, const Job& job, const Size& size) {
    const cv::Mat frame = DrawnFrame(size, job.depth);
    cv::Mat picture = BlackImage(size, job.dstDepth == 8 ? 1 : 2);
    for ([[maybe_unused]] auto _ : state) CopyThrough(frame, picture);
}

bool IsLibRaw(const peers::Peer& peer) {
    return std::string(peer.name).starts_with("libraw");
}

/** Two of LibRaw's algorithms represent the others at many sizes: the fastest good one and the best known. */
bool Scales(const peers::Peer& peer) {
    const std::string name = peer.name;
    return !IsLibRaw(peer) || name == "libraw-ppg" || name == "libraw-ahd";
}

/** Excludes conversions from words to bytes, which need another pass in other libraries. */
bool Takes(const peers::Peer& peer, const Job& job) {
    if (IsLibRaw(peer)) return job.depth == 12 && job.dstDepth == 12;
    return job.depth == job.dstDepth && (job.depth == 8 || peer.takesWords);
}

template <class IsWanted>
void AddAll(const std::string& name, const Job& job, const Size& size, int threads, const IsWanted& isWanted) {
    const auto add = [&](const char* who, auto run) { Add(name, size, threads, who, run); };
    add("floor", [=](auto& state) { Floor(state, job, size); });
    for (const Algorithm& algorithm : kAlgorithms)
        add(algorithm.name, [=](auto& state) { Ours(state, algorithm, job, size); });
    for (const peers::Peer& peer : peers::AllPeers())
        if (isWanted(peer)) add(peer.name, [=, &peer](auto& state) { RunPeer(state, peer, job.depth, size); });
}

const bool s_registered = [] {
    for (const auto& [library, version] : peers::LibraryVersions()) benchmark::AddCustomContext(library, version);
    ForEachSetting([](const Size& size, int threads) {
        for (const Job& job : kJobs)
            AddAll(job.Name(), job, size, threads, [&job](const peers::Peer& peer) { return Takes(peer, job); });
    });
    ForEachScale([](const Size& size, int threads) { AddAll("bayer_scaling", {8, 8}, size, threads, Scales); });
    return true;
}();

}  // namespace
}  // namespace kvx::bench
