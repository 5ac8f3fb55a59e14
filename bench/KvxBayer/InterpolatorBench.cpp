// The in-house interpolator beside LibRaw's, on the same 12-bit frame, in the same run.
//
// Ours is the whole conversion, samples in, interleaved picture out. LibRaw's figures are the interpolation alone: what
// it does before and after is not counted.
#include <libraw/libraw.h>

#include <cmath>
#include <vector>

#include "KvxDemosaicing/KvxDemosaicing.h"
#include "support/Runs.h"

namespace kvx::bench {
namespace {

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
                       static_cast<uint16_t>(size.width), static_cast<uint16_t>(size.height), 0, 0, 0, 0, 0,
                       LIBRAW_OPENBAYER_RGGB, 0, 0, 0);
        if (opened != LIBRAW_SUCCESS || unpack() != LIBRAW_SUCCESS || raw2image() != LIBRAW_SUCCESS) return false;
        for (int i = 0; i < 3; ++i) imgdata.color.rgb_cam[i][i] = 1;  // stays zero otherwise, and AHD sees no colour
        pre_interpolate();
        return true;
    }
};

void LibRawMethod(benchmark::State& state, Peer::Method method, const Size& size) {
    std::vector<uint16_t> frame = DrawFrame(size, 12);
    Peer peer;
    if (!peer.Open(frame, size)) state.SkipWithError("refused");
    for ([[maybe_unused]] auto _ : state) (peer.*method)();
}

template <class Sample>
void InHouse(benchmark::State& state, const Size& size) {
    constexpr bool bytes = sizeof(Sample) == 1;
    const std::vector<uint16_t> frame = DrawFrame(size, bytes ? 8 : 12);
    std::vector<Sample> samples(frame.begin(), frame.end()), picture(frame.size() * 3);
    _KvxImage src{};
    src.structSize = sizeof src;
    src.structVersion = KVX_IMAGE_VERSION;
    src.pixelType = bytes ? KvxFormat_BayerRG8 : KvxFormat_BayerRG12;
    src.pixelDepth = bytes ? 8 : 12;
    src.width = static_cast<uint32_t>(size.width);
    src.height = static_cast<uint32_t>(size.height);
    src.lineStep = static_cast<uint32_t>(src.width * sizeof(Sample));
    src.data = samples.data();
    _KvxImage dst = src;
    dst.pixelType = bytes ? KvxFormat_RGB8 : KvxFormat_RGB12;
    dst.lineStep = 3 * src.lineStep;
    dst.data = picture.data();

    KvxBayer* component = KvxBayer_CreateComponent();
    KvxComponent_SetParamInt(KvxBayer_GetComponent(component), "BayerAlgType", KvxBayerAlgorithm_IPP);
    for ([[maybe_unused]] auto _ : state)
        if (KvxBayer_ConvertImage(component, &src, &dst) != 0) state.SkipWithError("refused");
    KvxBayer_DeleteComponent(component);
}

const bool s_registered = [] {
    ForEachSetting([](const Size& size, int threads) {
        const auto add = [&](const char* who, auto run) { Add("interpolator", size, threads, who, run); };
        add("libraw_ahd", [=](auto& state) { LibRawMethod(state, &Peer::Ahd, size); });
        add("libraw_ppg", [=](auto& state) { LibRawMethod(state, &Peer::Ppg, size); });
        add("ours_12to12", [=](auto& state) { InHouse<uint16_t>(state, size); });
        add("ours_8to8", [=](auto& state) { InHouse<uint8_t>(state, size); });
    });
    return true;
}();

}  // namespace
}  // namespace kvx::bench
