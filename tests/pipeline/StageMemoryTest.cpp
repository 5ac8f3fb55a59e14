// What the stages touch: the documented memory and no more, whatever the size of a plane and the arguments.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstring>
#include <deque>
#include <functional>

#include "support/GuardedBuffer.h"
#include "support/PipelineFrame.h"

namespace kvx::test {
namespace {

using fuzz::Edge, fuzz::GuardedBuffer;

/** A call of a stage, and the scratch memory that it needs. */
struct Call {
    std::vector<std::pair<size_t, std::string>> scratch;  // bytes up to the end of each part, and its name
    std::function<int32_t(LogText_t*)> run;
    size_t buffer1 = 0, buffer2 = 0;
};

/** Calls of all stages, on planes of one size. */
class Stages {
public:
    /** @param f every real argument, @param k whole ones that may be anything */
    Stages(int w, int h, Edge edge, float f, int k) : m_edge(edge) {
        const size_t n = w > 0 && h > 0 ? size_t(w) * size_t(h) : 0, l = n ? size_t(w / 2) * size_t(h / 2) : 0;
        const size_t phase = n ? size_t((w + 1) / 2) * size_t((h + 1) / 2) : 0;
        const auto fixed = [&](size_t count) { return Plane<int32_t>(count, -kMost, kMost); };
        auto *raw = Plane<uint16_t>(n, 0, 4095), *codes = Plane<uint16_t>(n, 0, 1023);
        auto *tone = Plane<uint16_t>(4096, 0, 1023), *even = Plane<uint16_t>(l, 0, 1023);
        auto *p0 = Plane<uint16_t>(l, 0, 4095), *p1 = Plane<uint16_t>(l, 0, 4095), *c0 = Plane<uint16_t>(l, 0, 4095),
             *c1 = Plane<uint16_t>(l, 0, 4095);
        auto *low = fixed(l), *lowDifference = fixed(l), *plane = fixed(n), *copy = fixed(n), *steep = fixed(n);
        auto *large0 = fixed(4 * n), *large1 = fixed(4 * n), *large2 = fixed(4 * n);
        auto* thresholds = Plane<int32_t>(n, 0, kMost);
        auto* rgb = Plane<uint8_t>(3 * n, 0, 255);
        auto *five = Guarded(std::vector<float>(5, f)), *nine = Guarded(std::vector<float>(9, f));
        const auto add = [this](auto scratch, auto run, size_t buffer1 = 0, size_t buffer2 = 0) {
            calls.push_back({scratch, run, buffer1, buffer2});
        };
        using Parts = decltype(Call::scratch);
        add(Parts{},
            [=](auto* log) { return Alg_SubtractDarkFloor(reinterpret_cast<uint8_t*>(raw), w, h, k, raw, log); });
        add(Parts{}, [=](auto*) { return ApplyGlobalGain(reinterpret_cast<int16_t*>(raw), int(n), f); });
        add(Parts{}, [=](auto* log) { return Alg_WhiteBalance(raw, w, h, 1, f, f, f, f, p0, p1, c0, c1, log); });
        add(Parts{{l ? 2 * n : 0, "panCodes"}},
            [=](auto* log) { return Alg_InterpolatePan(p0, p1, w, h, codes, c0, c1, log); });
        add(Parts{{4 * l, "impulsePlane"}},
            [=](auto* log) { return Alg_GenerateLow(codes, p0, p1, c0, c1, w, h, low, even, lowDifference, log); });
        add(Parts{{k < 1 ? 0 : 4 * n, "impulsePlane"}},
            [=](auto* log) { return Alg_ImpulseFilter(plane, 5, w, h, k, log); });
        add(Parts{{4 * phase, "phaseDiff"},
                  {8 * phase, "reflDiff"},
                  {12 * phase, "thresAddr"},
                  {14 * phase, "phaseColor"}},
            [=](auto* log) {
                return Alg_LowColorDiffClean(codes, plane, w, h, f, f, f, f, f, five, five, five, f, f, f, k, 1, 2,
                                             log);
            });
        add(Parts{{4 * n, "reflPan"}, {8 * n, "thresAddr"}},
            [=](auto* log) { return Alg_LowPanClean(plane, w, h, f, f, five, five, five, f, f, f, k, 1, 2, log); });
        add(Parts{},
            [=](auto* log) { return Alg_PanBuildGammaNoiseThreshold(plane, w, h, f, f, f, f, thresholds, log); });
        add(Parts{},
            [=](auto* log) { return Alg_ColorBuildGammaNoiseThreshold(codes, w, h, f, f, f, f, thresholds, log); });
        add(Parts{}, [=](auto* log) { return Alg_IterativeSigmaFilter(plane, copy, w, h, k, thresholds, log); });
        add(
            Parts{{16 * n, "pBuf"}},
            [=](auto* log) { return Alg_LowColorDiffUpSample(plane, w, h, 2, large0, large1, large2, log); }, 12 * n);
        add(Parts{{16 * n, "pBuf"}}, [=](auto* log) { return Alg_LowPanUpSample(plane, w, h, large0, log); });
        add(Parts{{4 * n, "pBuf"}}, [=](auto* log) { return Alg_Convolve1D(steep, w, h, nine, 9, k & 1, log); });
        add(Parts{{2 * n, "pBuf"}}, [=](auto* log) { return Alg_Convolve2D(raw, w, h, nine, 3, 3, log); });
        add(Parts{}, [=](auto* log) {
            return Alg_ColorCorrection(plane, copy, plane, copy, w, h, f, f, f, f, f, f, f, f, f, rgb, tone, log);
        });
        add(
            Parts{{4 * n, "pBuf"}},
            [=](auto* log) { return Alg_Sharpness(rgb, codes, plane, w, h, f, f, f, f, tone, log); }, 4 * n, 4 * n);
    }

    std::vector<Call> calls;

private:
    static constexpr int kMost = 1023 * 65536;

    template <class T>
    T* Guarded(const std::vector<T>& values) {
        m_memory.emplace_back(values.size() * sizeof(T), m_edge);
        if (!values.empty()) std::memcpy(m_memory.back().Data(), values.data(), values.size() * sizeof(T));
        return reinterpret_cast<T*>(m_memory.back().Data());
    }
    template <class T>
    T* Plane(size_t count, int least, int most) {
        return Guarded(Drawn<T>(count, least, most, unsigned(m_memory.size())));
    }

    Edge m_edge;
    std::deque<GuardedBuffer> m_memory;
};

using Result = std::pair<int32_t, std::string>;

/** The result of a call and what it logs, with so much scratch memory. @param without one of its buffers, or none */
Result ResultOf(const Call& call, size_t bytes, int without, Edge edge) {
    const GuardedBuffer scratch((bytes + 7) / 8 * 8, edge), buffer1(call.buffer1, edge), buffer2(call.buffer2, edge);
    Alg_SetScratch(scratch.Data(), scratch.Data() + bytes, without == 1 ? nullptr : buffer1.Data(),
                   without == 2 ? nullptr : buffer2.Data());
    char text[256] = {};
    LogText_t log{text, 0};
    const int32_t result = call.run(&log);
    Alg_SetScratch(nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(log.length, std::string(text).size());
    return {result, text};
}

TEST(Stages, TouchTheirMemoryOnlyAndSayWhichTheyLack) {
    constexpr std::pair<int, int> sizes[] = {{12, 8}, {7, 5},   {2, 2}, {1, 1},  {1, 9},
                                             {3, 2},  {70, 33}, {0, 4}, {-3, -2}};
    constexpr std::pair<float, int> arguments[] = {{1, 1}, {.3F, 2}, {NAN, INT_MAX}, {1e38F, 0}, {-INFINITY, -5}};
    for (const auto& [width, height] : sizes)
        for (const auto& [real, whole] : arguments)
            for (const Edge edge : {Edge::End, Edge::Begin}) {
                const Stages stages(width, height, edge, real, whole);
                for (const Call& call : stages.calls) {
                    SCOPED_TRACE(testing::Message() << "stage " << &call - stages.calls.data() << ", " << width << "x"
                                                    << height << ", " << real << ", " << whole);
                    const size_t enough = call.scratch.empty() ? 0 : call.scratch.back().first;
                    ASSERT_EQ(ResultOf(call, enough, 0, edge), (Result{0, ""}));
                    for (const auto& [bytes, what] : call.scratch)
                        if (bytes) {
                            ASSERT_EQ(ResultOf(call, bytes - 1, 0, edge),
                                      (Result{-1, what + " memory alloc error.\n"}));
                        }
                    for (const int buffer : {1, 2})
                        if (buffer == 1 ? call.buffer1 : call.buffer2) {
                            ASSERT_EQ(ResultOf(call, enough, buffer, edge),
                                      (Result{-1, "g_dynamicBuffer1 memory alloc error.\n"}));
                        }
                }
            }
    int32_t plane[4] = {}, large[16];
    EXPECT_EQ(Alg_LowPanUpSample(plane, 2, 2, large, nullptr), -1);  // no arena at all, and no log
    for (const int pattern : {-1, 4}) {
        const Call call{
            {},
            [&](auto* log) { return Alg_LowColorDiffUpSample(plane, 2, 2, pattern, large, large, large, log); },
            48};
        EXPECT_EQ(ResultOf(call, 64, 0, Edge::End), (Result{-1, "CFA pattern error.\n"}));
    }
}

}  // namespace
}  // namespace kvx::test
