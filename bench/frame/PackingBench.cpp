// Unpacking and packing beside memcpy and a plain loop. GB/s are bytes of the packed image, for all of them.
//
// A name is <unpack or pack>/<packing>/<image>/<who>: the small image stays in the cache, the large one does not.
#include <benchmark/benchmark.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "KvxFrame/Packing.h"

namespace kvx::bench {
namespace {

using frame::PackedImage;
using frame::Packing;

struct Job {
    const char* name;
    Packing packing;
};

constexpr Job kJobs[] = {
    {"10p", Packing::Pfnc10p},           {"12p", Packing::Pfnc12p},           {"14p", Packing::Pfnc14p},
    {"10Packed", Packing::GigE10Packed}, {"12Packed", Packing::GigE12Packed}, {"mipi10", Packing::Mipi10},
    {"mipi12", Packing::Mipi12},         {"mipi14", Packing::Mipi14},         {"msb12", Packing::Msb12},
};

/** Both forms of an image. */
struct Frame {
    PackedImage image;
    std::vector<uint8_t> packed;
    std::vector<uint16_t> words;

    Frame(Packing packing, uint32_t width, uint32_t height) : image{packing, width, height} {
        packed.resize(PackedImageBytes(image));
        words.resize(size_t{width} * height);
        std::mt19937 random(1);
        for (uint8_t& byte : packed) byte = static_cast<uint8_t>(random());
        for (uint16_t& word : words) word = static_cast<uint16_t>(random());
    }
    ptrdiff_t Step() const {
        return ptrdiff_t{2} * image.width;
    }
};

void Unpack(Frame& frame, int threads) {
    UnpackImage(frame.image, frame.packed.data(), frame.packed.size(), frame.words.data(), frame.Step(), threads);
}

void Pack(Frame& frame, int threads) {
    PackImage(frame.image, frame.words.data(), frame.Step(), frame.packed.data(), frame.packed.size(), threads);
}

/** 12p as it is written by hand, a pair of samples at a time. */
void PlainUnpack12p(Frame& frame) {
    const uint8_t* in = frame.packed.data();
    for (size_t i = 0; i + 1 < frame.words.size(); i += 2, in += 3) {
        frame.words[i] = static_cast<uint16_t>(in[0] | (in[1] & 0x0F) << 8);
        frame.words[i + 1] = static_cast<uint16_t>(in[1] >> 4 | in[2] << 4);
    }
}

/** RAW10 likewise. */
void PlainUnpackMipi10(Frame& frame) {
    const uint8_t* in = frame.packed.data();
    for (size_t i = 0; i + 3 < frame.words.size(); i += 4, in += 5)
        for (size_t k = 0; k < 4; ++k) frame.words[i + k] = static_cast<uint16_t>(in[k] << 2 | (in[4] >> 2 * k & 3));
}

void PlainPack12p(Frame& frame) {
    uint8_t* out = frame.packed.data();
    for (size_t i = 0; i + 1 < frame.words.size(); i += 2, out += 3) {
        const unsigned a = frame.words[i], b = frame.words[i + 1];
        out[0] = static_cast<uint8_t>(a);
        out[1] = static_cast<uint8_t>((a >> 8 & 0x0F) | b << 4);
        out[2] = static_cast<uint8_t>(b >> 4);
    }
}

/** Writes as many bytes as unpacking does, from a source of that size. */
void Copy(Frame& frame) {
    static std::vector<uint16_t> source;
    source.resize(frame.words.size());
    std::memcpy(frame.words.data(), source.data(), 2 * source.size());
}

template <class Body>
void Add(const std::string& job, Packing packing, uint32_t width, uint32_t height, const char* who, Body body) {
    const std::string name = job + "/" + std::to_string(width) + "x" + std::to_string(height) + "/" + who;
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
        Frame frame(packing, width, height);
        for ([[maybe_unused]] auto _ : state) {
            body(frame);
            benchmark::ClobberMemory();
        }
        const auto bytes = static_cast<double>(frame.packed.size());
        state.counters["GB/s"] = benchmark::Counter(bytes * 1e-9, benchmark::Counter::kIsIterationInvariantRate);
    })->UseRealTime();
}

[[maybe_unused]] const bool registered = [] {
    for (const auto& [width, height] : {std::pair{1920u, 32u}, std::pair{4096u, 3072u}}) {
        for (const Job& job : kJobs)
            for (const int threads : {1, 2}) {
                const std::string who = "threads:" + std::to_string(threads);
                const auto add = [&](const std::string& verb, void (*body)(Frame&, int)) {
                    Add(verb + job.name, job.packing, width, height, who.c_str(),
                        [=](Frame& frame) { body(frame, threads); });
                };
                add("unpack/", Unpack);
                add("pack/", Pack);
            }
        Add("unpack/12p", Packing::Pfnc12p, width, height, "plain", PlainUnpack12p);
        Add("unpack/mipi10", Packing::Mipi10, width, height, "plain", PlainUnpackMipi10);
        Add("pack/12p", Packing::Pfnc12p, width, height, "plain", PlainPack12p);
        Add("unpack/12p", Packing::Pfnc12p, width, height, "memcpy", Copy);
    }
    return true;
}();

}  // namespace
}  // namespace kvx::bench
