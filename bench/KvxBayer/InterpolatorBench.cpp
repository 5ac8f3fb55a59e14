// The in-house interpolator beside LibRaw's, on the same 12-bit frame, in the same run.
//
// Ours is the whole conversion, samples in, interleaved picture out. LibRaw's figures are the interpolation alone: what
// it does before and after is not counted.
#include <benchmark/benchmark.h>
#include <libraw/libraw.h>
#include <omp.h>

#include <cmath>
#include <string>
#include <vector>

#include "KvxDemosaicing/KvxDemosaicing.h"

namespace {

struct Size {
    uint16_t width, height;
};

/** A frame with edges, ramps, texture and noise: methods that choose a direction must not find it too easy. */
std::vector<uint16_t> DrawFrame(const Size& size, int depth) {
    std::vector<uint16_t> frame;
    unsigned random = 1;
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x) {
            random = random * 1664525 + 1013904223;
            const double wave = 0.5 + 0.3 * std::sin(x * x * 2e-5 + y * 0.05) * std::cos(y * y * 1e-5);
            const double colour = (x + y) % 2 == 0 ? (y % 2 ? 0.7 : 0.9) : 1.0;
            const double edge = (x / 97 + y / 61) % 2 ? 0.2 : 0.0;
            const double value = wave * colour + edge * 0.5 + (random >> 24) / 256.0 * 0.02;
            frame.push_back(static_cast<uint16_t>(std::min(value, 1.0) * ((1 << depth) - 1)));
        }
    return frame;
}

/** LibRaw's protected steps, on a frame that was given to it as raw bytes. */
class Peer : public LibRaw {
public:
    using Method = void (Peer::*)();
    void Ahd() {
        ahd_interpolate();
    }
    void Ppg() {
        ppg_interpolate();
    }
    bool Open(std::vector<uint16_t>& frame, const Size& size) {
        const int opened =
            open_bayer(reinterpret_cast<unsigned char*>(frame.data()), static_cast<unsigned>(frame.size() * 2),
                       size.width, size.height, 0, 0, 0, 0, 0, LIBRAW_OPENBAYER_RGGB, 0, 0, 0);
        if (opened != LIBRAW_SUCCESS || unpack() != LIBRAW_SUCCESS || raw2image() != LIBRAW_SUCCESS) return false;
        for (int i = 0; i < 3; ++i) imgdata.color.rgb_cam[i][i] = 1;  // stays zero otherwise, and AHD sees no colour
        pre_interpolate();
        return true;
    }
};

void CountPixels(benchmark::State& state, const Size& size) {
    state.counters["Mpixel/s"] =
        benchmark::Counter(size.width * 1e-6 * size.height, benchmark::Counter::kIsIterationInvariantRate);
}

void LibRawMethod(benchmark::State& state, Peer::Method method, const Size& size, int threads) {
    std::vector<uint16_t> frame = DrawFrame(size, 12);
    Peer peer;
    omp_set_num_threads(threads);
    if (!peer.Open(frame, size)) state.SkipWithError("refused");
    for ([[maybe_unused]] auto _ : state) (peer.*method)();
    CountPixels(state, size);
}

template <class Sample>
void InHouse(benchmark::State& state, const Size& size, int threads) {
    constexpr bool bytes = sizeof(Sample) == 1;
    const std::vector<uint16_t> frame = DrawFrame(size, bytes ? 8 : 12);
    std::vector<Sample> samples(frame.begin(), frame.end()), picture(frame.size() * 3);
    _KvxImage src{};
    src.structSize = sizeof src;
    src.structVersion = KVX_IMAGE_VERSION;
    src.pixelType = bytes ? KvxFormat_BayerRG8 : KvxFormat_BayerRG12;
    src.pixelDepth = bytes ? 8 : 12;
    src.width = size.width;
    src.height = size.height;
    src.lineStep = static_cast<uint32_t>(size.width * sizeof(Sample));
    src.data = samples.data();
    _KvxImage dst = src;
    dst.pixelType = bytes ? KvxFormat_RGB8 : KvxFormat_RGB12;
    dst.lineStep = 3 * src.lineStep;
    dst.data = picture.data();

    omp_set_num_threads(threads);
    KvxBayer* component = KvxBayer_CreateComponent();
    KvxComponent_SetParamInt(KvxBayer_GetComponent(component), "BayerAlgType", KvxBayerAlgorithm_IPP);
    for ([[maybe_unused]] auto _ : state)
        if (KvxBayer_ConvertImage(component, &src, &dst) != 0) state.SkipWithError("refused");
    KvxBayer_DeleteComponent(component);
    CountPixels(state, size);
}

const bool s_registered = [] {
    for (const Size& size : {Size{1920, 1200}, Size{4096, 3072}})
        for (const int threads : {1, 2}) {
            const std::string stem = "interpolator/" + std::to_string(size.width) + "x" + std::to_string(size.height) +
                                     "/threads:" + std::to_string(threads) + "/";
            const auto add = [&](const char* who, auto run) {
                benchmark::RegisterBenchmark((stem + who).c_str(), run)->UseRealTime()->Unit(benchmark::kMillisecond);
            };
            add("libraw_ahd", [=](auto& state) { LibRawMethod(state, &Peer::Ahd, size, threads); });
            add("libraw_ppg", [=](auto& state) { LibRawMethod(state, &Peer::Ppg, size, threads); });
            add("ours_12to12", [=](auto& state) { InHouse<uint16_t>(state, size, threads); });
            add("ours_8to8", [=](auto& state) { InHouse<uint8_t>(state, size, threads); });
        }
    return true;
}();

}  // namespace
