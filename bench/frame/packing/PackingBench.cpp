// Unpacking and packing compared with a plain loop, if there is one, and with memcpy of the words. GB/s count packed
// bytes.
//
// A name is <unpack or pack>_<packing>/<size>/threads:<n>/<who>: "bare" is the plain loop, the reference of the job.
#include <cstring>
#include <random>
#include <vector>

#include "KvxFrame/Packing.h"
#include "support/Runs.h"

namespace kvx::bench {
namespace {

using frame::PackedImage;
using frame::Packing;

/** Both forms of an image. */
struct Frame {
    PackedImage image;
    std::vector<uint8_t> packed;
    std::vector<uint16_t> words;

    Frame(Packing packing, const Size& size)
        : image{packing, static_cast<uint32_t>(size.width), static_cast<uint32_t>(size.height)} {
        packed.resize(PackedImageBytes(image));
        words.resize(size_t{image.width} * image.height);
        std::mt19937 random(1);
        for (uint8_t& byte : packed) byte = static_cast<uint8_t>(random());
        for (uint16_t& word : words) word = static_cast<uint16_t>(random());
    }
    ptrdiff_t Step() const {
        return ptrdiff_t{2} * image.width;
    }
};

void Unpack(Frame& frame) {
    UnpackImage(frame.image, frame.packed.data(), frame.packed.size(), frame.words.data(), frame.Step());
}

void Pack(Frame& frame) {
    PackImage(frame.image, frame.words.data(), frame.Step(), frame.packed.data(), frame.packed.size());
}

/** Unpacks 12p in pairs of samples, as commonly written. */
void PlainUnpack12p(Frame& frame) {
    const uint8_t* in = frame.packed.data();
    for (size_t i = 0; i + 1 < frame.words.size(); i += 2, in += 3) {
        frame.words[i] = static_cast<uint16_t>(in[0] | (in[1] & 0x0F) << 8);
        frame.words[i + 1] = static_cast<uint16_t>(in[1] >> 4 | in[2] << 4);
    }
}

/** Unpacks RAW10 in groups of four. */
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

/** Copies the size of the words. */
void Copy(Frame& frame) {
    static std::vector<uint16_t> source;
    source.resize(frame.words.size());
    std::memcpy(frame.words.data(), source.data(), 2 * source.size());
}

/** A packing, and its plain loops. */
struct Job {
    const char* name;
    Packing packing;
    void (*plainUnpack)(Frame&) = nullptr;
    void (*plainPack)(Frame&) = nullptr;
};

constexpr Job kJobs[] = {
    {"10p", Packing::Pfnc10p},           {"12p", Packing::Pfnc12p, PlainUnpack12p, PlainPack12p},
    {"14p", Packing::Pfnc14p},           {"10Packed", Packing::GigE10Packed},
    {"12Packed", Packing::GigE12Packed}, {"mipi10", Packing::Mipi10, PlainUnpackMipi10},
    {"mipi12", Packing::Mipi12},         {"mipi14", Packing::Mipi14},
    {"msb12", Packing::Msb12},
};

void AddRun(const std::string& job, Packing packing, const Size& size, int threads, const char* who,
            void (*body)(Frame&)) {
    Add(job, size, threads, who, [=](benchmark::State& state) {
        Frame frame(packing, size);
        for ([[maybe_unused]] auto _ : state) {
            body(frame);
            benchmark::ClobberMemory();
        }
        const auto bytes = static_cast<double>(frame.packed.size());
        state.counters["GB/s"] = benchmark::Counter(bytes * 1e-9, benchmark::Counter::kIsIterationInvariantRate);
    });
}

const bool s_registered = [] {
    ForEachSetting([](const Size& size, int threads) {
        for (const Job& job : kJobs) {
            const std::string unpack = std::string("unpack_") + job.name, pack = std::string("pack_") + job.name;
            AddRun(unpack, job.packing, size, threads, "library", Unpack);
            AddRun(pack, job.packing, size, threads, "library", Pack);
            if (threads > 1) continue;
            if (job.plainUnpack) AddRun(unpack, job.packing, size, threads, "bare", job.plainUnpack);
            if (job.plainPack) AddRun(pack, job.packing, size, threads, "bare", job.plainPack);
            AddRun(unpack, job.packing, size, threads, "memcpy", Copy);
        }
    });
    return true;
}();

}  // namespace
}  // namespace kvx::bench
