/** TrueSense conversions for tests: what to convert and how, the library's result and the slow one. */
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <type_traits>
#include <vector>

#include "KvxTrueSense/IDemConvertion.h"
#include "demosaicers/interpolation/InterpolatingDemosaicer.h"
#include "demosaicers/interpolation/SlowTrueSense.h"
#include "pipeline/ToneScales.h"

namespace kvx::test {

enum class Content { Noise, Extremes, Wild, OneWild, Scene };  // Wild: bits above the depth; Scene: steps, some noise

struct TrueSenseJob {
    int width, height;
    unsigned grid;
    size_t sourceBytes = 2, resultBytes = 1;  // of a sample: 1 to 1, 2 to 2 or 2 to 1
    int depth = 12;
    Content content = Content::Noise;
    int left = 0, top = 0, right = 0, bottom = 0;         // of the source about the region
    int sourcePadding = 0, resultPadding = 0;             // bytes after a row
    bool sourceUpwards = false, resultBackwards = false;  // negative line steps
    bool withAlpha = false, blueFirst = false, horMirrored = false, verMirrored = false, deep = false;
    int matrix = 0;  // 0: identity; 1: the default one; 2: the components' decimals; 3: steep
    bool ownTone = false;
    int threads = 1, bandRows = kBandRows;
    unsigned seed = 1;
};

/** A job with everything but size and grid chosen at random. */
inline TrueSenseJob DrawJob(int width, int height, unsigned grid, std::mt19937& random) {
    const auto draw = [&](int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); };
    TrueSenseJob job{width, height, grid};
    job.sourceBytes = draw(3) ? 2 : 1;
    job.resultBytes = job.sourceBytes == 2 && draw(2) ? 2 : 1;
    job.depth = job.sourceBytes == 1 && draw(4) ? 8 : 8 + 2 * draw(5);
    job.content = static_cast<Content>(draw(4));
    if (draw(2)) job.left = draw(9), job.top = draw(9), job.right = draw(9), job.bottom = draw(9);
    job.sourcePadding = draw(4), job.resultPadding = draw(4);
    for (bool* flag :
         {&job.sourceUpwards, &job.resultBackwards, &job.withAlpha, &job.blueFirst, &job.horMirrored, &job.verMirrored})
        *flag = draw(3) == 0;
    job.deep = draw(8) == 0;
    job.matrix = draw(4);
    job.ownTone = draw(3) == 0;
    constexpr int threads[] = {1, 1, 2, 2, 2, 3, 3, 7}, bandRows[] = {1, 2, 3, 5, 16, kBandRows};
    job.threads = threads[draw(8)];
    job.bandRows = bandRows[draw(6)];
    job.seed = static_cast<unsigned>(random());
    return job;
}

/** The seed tells one drawn job from another of its size. */
inline std::ostream& operator<<(std::ostream& out, const TrueSenseJob& job) {
    return out << job.width << "x" << job.height << " grid " << job.grid << ", " << job.depth << " bits in "
               << job.sourceBytes << " to " << job.resultBytes << " bytes, seed " << job.seed;
}

/** With bands of this height where it works in bands. */
template <class Demosaicer>
Demosaicer MakeDemosaicer(int bandRows) {
    if constexpr (std::is_constructible_v<Demosaicer, int>)
        return Demosaicer(bandRows);
    else
        return Demosaicer();
}

/** The buffers of one job. */
class TrueSenseRun {
public:
    explicit TrueSenseRun(const TrueSenseJob& job) : m_job(job) {
        MakeSource();
        MakeParams();
        m_dstStep = m_job.width * PixelBytes() + m_job.resultPadding;
        m_result.assign(kGuard + (m_job.height + 1) * m_dstStep * 2 + kGuard, 0);
        for (size_t i = 0; i < m_result.size(); ++i) m_result[i] = static_cast<uint8_t>(0xA5 ^ (i * 31));
        m_before = m_result;
    }

    /** Through an object of either demosaicer, which may have converted before. */
    template <template <class> class Demosaicer>
    int Convert() {
        if (m_job.sourceBytes == 1) {
            auto demosaicer = MakeDemosaicer<Demosaicer<uint8_t>>(m_job.bandRows);
            return Convert<uint8_t>(&demosaicer);
        }
        auto demosaicer = MakeDemosaicer<Demosaicer<uint16_t>>(m_job.bandRows);
        return Convert<uint16_t>(&demosaicer);
    }
    template <class T>
    int Convert(IDemConvertion<T>* demosaicer) {
        if (const int result = Init(demosaicer)) return result;
        return m_job.sourceBytes == m_job.resultBytes ? demosaicer->Calculate() : demosaicer->CalculateRGB();
    }
    template <class T>
    int Init(IDemConvertion<T>* demosaicer) {
        const _KvxRect roi{uint32_t(m_job.left), uint32_t(m_job.top), uint32_t(m_job.width), uint32_t(m_job.height)};
        const _KvxSize size{uint32_t(m_size.width), uint32_t(m_size.height)};
        const auto grid = static_cast<unsigned char>(m_job.grid);
        const int srcStep = int(m_job.sourceUpwards ? -m_srcStep : m_srcStep);
        const int dstStep = int(m_job.resultBackwards ? -m_dstStep : m_dstStep);
        uint8_t* src = m_source.data() + (m_job.sourceUpwards ? (m_size.height - 1) * m_srcStep : 0);
        demosaicer->SetOutputPixelType(m_job.withAlpha, m_job.blueFirst);
        if (m_job.sourceBytes == m_job.resultBytes)
            return demosaicer->Init(reinterpret_cast<T*>(src), roi, size, srcStep, m_job.depth,
                                    reinterpret_cast<T*>(First()), dstStep, grid, &m_params);
        return demosaicer->InitRGB(reinterpret_cast<uint16_t*>(src), roi, size, srcStep, m_job.depth, First(), dstStep,
                                   grid, &m_params);
    }

    const std::vector<uint8_t>& Result() const {
        return m_result;
    }
    bool IsUntouched() const {
        return m_result == m_before;
    }

    /** The whole buffer as it must be after a conversion whose planes the slow twin made. */
    std::vector<uint8_t> Expected(const SlowPicture& planes) const {
        const double matrix[] = {m_params.RR, m_params.RG, m_params.RB, m_params.GR, m_params.GG,
                                 m_params.GB, m_params.BR, m_params.BG, m_params.BB};
        const uint16_t* tone = m_params.toneTable ? m_params.toneTable : Tonescale12Table12.data();
        return Placed([&](size_t pixel, int shift) { return SlowOutput(planes.pixels[pixel], matrix, tone, shift); });
    }
    /** The whole buffer with the pixels that `storedAt(index, output shift)` gives. */
    template <class StoredAt>
    std::vector<uint8_t> Placed(const StoredAt& storedAt) const {
        std::vector<uint8_t> buffer = m_before;
        // The shift, pixel by pixel the address: spelt out, not taken from the library.
        int shift = m_job.deep || m_job.depth % 2 ? 4 : m_job.depth - 12;
        if (m_job.sourceBytes > m_job.resultBytes) shift = -4;
        const long direction = m_job.resultBackwards ? -1 : 1;
        for (int i = 0; i < m_job.height; ++i)
            for (int j = 0; j < m_job.width; ++j) {
                const Colour c = storedAt(size_t(i) * m_job.width + j, shift);
                uint8_t* pixel =
                    buffer.data() + (First() - m_result.data()) + i * m_dstStep + direction * j * PixelBytes();
                for (int k = 0; k < 3; ++k)
                    std::memcpy(pixel + k * m_job.resultBytes, &c.value[m_job.blueFirst ? 2 - k : k],
                                m_job.resultBytes);
            }
        return buffer;
    }
    /** @param margin of the algorithm's working area */
    SlowSource Slow(int margin = 0) const {
        SlowSource slow = m_slow;
        slow.margin = margin;
        return slow;
    }
    tagTrueSenseParam& Params() {
        return m_params;
    }

private:
    static constexpr long kGuard = 512;

    long PixelBytes() const {
        return long(m_job.withAlpha ? 4 : 3) * long(m_job.resultBytes);
    }
    /** Where the picture's first pixel goes; backwards, it is the last one of its row. */
    uint8_t* First() const {
        return const_cast<uint8_t*>(m_result.data()) + kGuard +
               (m_job.resultBackwards ? (m_job.width - 1) * PixelBytes() : 0);
    }

    void MakeSource() {
        std::mt19937 random(m_job.seed);
        m_size = {m_job.left + m_job.width + m_job.right, m_job.top + m_job.height + m_job.bottom};
        m_srcStep = m_size.width * long(m_job.sourceBytes) + m_job.sourcePadding;
        m_source.resize(size_t(m_size.height * m_srcStep));
        for (uint8_t& byte : m_source) byte = static_cast<uint8_t>(random());
        m_slow = {m_job.width,       m_job.height, {},        m_job.depth, m_job.grid,  m_job.horMirrored,
                  m_job.verMirrored, m_job.left,   m_job.top, m_job.right, m_job.bottom};
        const unsigned top = (1u << m_job.depth) - 1, widest = m_job.sourceBytes == 1 ? 0xFF : 0xFFFF;
        const long wildAt =
            m_job.content == Content::OneWild ? long(random() % unsigned(m_job.width * m_job.height)) : -1;
        for (int i = -m_job.top; i < m_job.height + m_job.bottom; ++i)
            for (int j = -m_job.left; j < m_job.width + m_job.right; ++j) {
                const auto drawn = static_cast<unsigned>(random());
                unsigned sample = drawn & top;
                if (m_job.content == Content::Extremes) sample = drawn & 1 ? top : 0;
                if (m_job.content == Content::Scene)
                    sample = unsigned((j + 8) / 8 * 300 + (i + 16) / 16 * 100 + int(drawn % 40)) % 4096 << 4 >>
                             (16 - m_job.depth);
                const bool isInside = i >= 0 && i < m_job.height && j >= 0 && j < m_job.width;
                const bool isWild = isInside && long(i) * m_job.width + j == wildAt;
                if (m_job.content == Content::Wild || isWild) sample = drawn | 0x8000;
                sample &= widest;
                m_slow.samples.push_back(int(sample));
                const long row = m_job.sourceUpwards ? m_size.height - 1 - (m_job.top + i) : m_job.top + i;
                std::memcpy(&m_source[size_t(row * m_srcStep + (m_job.left + j) * long(m_job.sourceBytes))], &sample,
                            m_job.sourceBytes);
            }
    }

    void MakeParams() {
        std::mt19937 random(m_job.seed + 1);
        TrueSense_DefaultValues(&m_params);
        constexpr double matrices[4][9] = {{1, 0, 0, 0, 1, 0, 0, 0, 1},
                                           {},
                                           {1.657, -.5325, -.1245, -.106, 1.443, -.337, .131, -.445, 1.314},
                                           {9.5, -7.25, -1e9, 3e5, .5, 1e-3, -.75, .001, 1.7}};
        if (m_job.matrix != 1) std::memcpy(&m_params.RR, matrices[m_job.matrix], sizeof matrices[0]);
        m_params.threads_num = m_job.threads;
        m_params.normalizationEnable = m_job.deep;
        m_params.horMirrored = m_job.horMirrored;
        m_params.verMirrored = m_job.verMirrored;
        for (size_t i = 0; i < KVX_TONE_TABLE_SIZE; ++i)
            m_tone.push_back(static_cast<uint16_t>(m_job.ownTone ? random() : i));
        m_params.toneTable = m_tone.data();
    }

    TrueSenseJob m_job;
    struct {
        int width, height;
    } m_size{};
    long m_srcStep = 0, m_dstStep = 0;
    std::vector<uint8_t> m_source, m_result, m_before;
    std::vector<uint16_t> m_tone;
    tagTrueSenseParam m_params{};
    SlowSource m_slow;
};

}  // namespace kvx::test
