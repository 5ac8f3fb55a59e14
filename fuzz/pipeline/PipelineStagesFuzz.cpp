// The single stages of the noise-reducing pipeline: any size, in buffers of exactly the documented sizes, with
// as much scratch memory as a stage needs, less, or none.
#include <algorithm>
#include <climits>

#include "KvxDemosaicing/KvxPipeline.h"
#include "support/GuardedBuffer.h"

using namespace kvx::fuzz;

namespace {

constexpr uint32_t kLogBytes = 4096;
constexpr int32_t kSample = 4095, kCode = 1023, kFixed = 1023 * 65536;  // the largest ones

/** Values of a plane, `least` to `most`. */
template <class T>
class Plane {
public:
    Plane(Input& input, int64_t count, int32_t least, int32_t most)
        : m_buffer(static_cast<size_t>(count) * sizeof(T), input.Flag() ? Edge::End : Edge::Begin) {
        input.Fill(m_buffer.Data(), m_buffer.Size());
        if (int64_t{most} - least == (int64_t{1} << (8 * sizeof(T))) - 1) return;  // whatever the type holds
        for (T *value = *this, *end = value + count; value != end; ++value)
            *value = static_cast<T>(least + static_cast<uint32_t>(*value) % (int64_t{most} - least + 1));
    }
    operator T*() const {
        return reinterpret_cast<T*>(m_buffer.Data());
    }

private:
    GuardedBuffer m_buffer;
};

using Bytes = Plane<uint8_t>;
using Words = Plane<uint16_t>;
using Fixed = Plane<int32_t>;

/** Real numbers, some of any bits. */
template <size_t count>
struct Reals {
    explicit Reals(Input& input) {
        for (float& value : values)
            value = input.Below(4) == 0 ? input.Take<float>() : static_cast<float>(input.Below(80)) / 4 - 2;
    }
    operator const float*() const {
        return values;
    }
    float values[count];
};

class Stages {
public:
    explicit Stages(Input& input)
        : m_input(input),
          m_width(DrawLength()),
          m_height(DrawLength()),
          m_count(CountOf(m_width, m_height)),
          m_cells(CountOf(m_width / 2, m_height / 2)),
          m_pattern(input.Below(8) ? static_cast<int32_t>(input.Below(4)) : input.Take<int32_t>()),
          m_text(kLogBytes),
          m_log{input.Below(8) ? reinterpret_cast<char*>(m_text.Data()) : nullptr, 0},
          m_to(input.Below(8) ? &m_log : nullptr) {}

    void Run() {
        constexpr void (Stages::*stages[])() = {&Stages::FromRawSamples, &Stages::InterpolatePan,
                                                &Stages::GenerateLow,    &Stages::FilterImpulses,
                                                &Stages::Clean,          &Stages::FilterWithThresholds,
                                                &Stages::UpSample,       &Stages::Convolve,
                                                &Stages::Finish,         &Stages::Diagnose};
        (this->*m_input.OneOf(stages))();
    }

private:
    int32_t DrawLength() {
        return static_cast<int32_t>(m_input.Below(m_input.Below(8) ? 40 : 200)) - (m_input.Below(16) == 0 ? 3 : 0);
    }
    static int64_t CountOf(int32_t width, int32_t height) {
        return width > 0 && height > 0 ? int64_t{width} * height : 0;
    }
    /** Mostly 0 to 4. */
    int32_t DrawSmall() {
        return m_input.Below(8) ? static_cast<int32_t>(m_input.Below(5)) : m_input.Take<int32_t>();
    }
    Words Samples(int64_t count) {
        return {m_input, count, 0, kSample};
    }
    Words Codes(int64_t count) {
        return {m_input, count, 0, kCode};
    }
    Fixed Differences(int64_t count) {
        return {m_input, count, -kFixed, kFixed};
    }

    /** Runs `stage` with the scratch memory and the two buffers that it needs, with less, or without. */
    template <class Stage>
    void Expect(bool succeeds, int64_t needed, const Stage& stage, int64_t buffer1 = 0, int64_t buffer2 = 0) {
        const uint32_t kind = m_input.Below(8);
        const int64_t given = kind > 1 ? needed : kind == 1 && needed > 0 ? needed - 1 - m_input.Below(64) : 0;
        const int64_t bytes = std::max(given, int64_t{0});
        const GuardedBuffer scratch(static_cast<size_t>(bytes + 7) / 8 * 8);
        const GuardedBuffer first(static_cast<size_t>(buffer1)), second(static_cast<size_t>(buffer2));
        const bool hasBuffers = kind != 0 && m_input.Below(8) != 0;
        Alg_SetScratch(kind ? scratch.Data() : nullptr, kind ? scratch.Data() + bytes : nullptr,
                       hasBuffers ? first.Data() : nullptr, hasBuffers ? second.Data() : nullptr);
        const bool hasNothing = (needed > 0 && bytes == 0) || (buffer1 > 0 && !hasBuffers);
        const int32_t result = stage();
        Alg_SetScratch(nullptr, nullptr, nullptr, nullptr);
        Require(result == 0 || result == -1, "a documented result");
        Require(result == -1 || (succeeds && !hasNothing), "a stage fails with false arguments, and without memory");
        Require(result == 0 || !succeeds || bytes < needed || hasNothing, "a stage that has all it needs succeeds");
    }
    static void RequireAtMost(int most, const Words& values, int64_t count) {
        Require(std::all_of(+values, values + count, [=](uint16_t value) { return value <= most; }),
                "samples and codes within their range");
    }

    void FromRawSamples() {
        const Words raw = Samples(m_count), out = Samples(m_count), pan0 = Samples(m_cells), pan1 = Samples(m_cells),
                    colour0 = Samples(m_cells), colour1 = Samples(m_cells);
        const Reals<5> r(m_input);
        const auto* bytes = reinterpret_cast<const uint8_t*>(static_cast<uint16_t*>(raw));
        const auto floor = m_input.Take<int32_t>();
        Expect(true, 0, [&] { return Alg_SubtractDarkFloor(bytes, m_width, m_height, floor, out, m_to); });
        auto* samples = reinterpret_cast<int16_t*>(static_cast<uint16_t*>(out));
        Expect(true, 0, [&] { return ApplyGlobalGain(samples, static_cast<int32_t>(m_count), r[4]); });
        RequireAtMost(kSample, out, m_count);
        Expect(m_pattern >= 0 && m_pattern < 4, 0, [&] {
            return Alg_WhiteBalance(raw, m_width, m_height, m_pattern, r[0], r[1], r[2], r[3], pan0, pan1, colour0,
                                    colour1, m_to);
        });
        for (const Words* plane : {&pan0, &pan1, &colour0, &colour1}) RequireAtMost(kSample, *plane, m_cells);
    }

    void InterpolatePan() {
        const Words pan0 = Samples(m_cells), pan1 = Samples(m_cells), pan = Codes(m_count), panAt0 = Samples(m_cells),
                    panAt1 = Samples(m_cells);
        Expect(true, m_cells ? 2 * m_count : 0,
               [&] { return Alg_InterpolatePan(pan0, pan1, m_width, m_height, pan, panAt0, panAt1, m_to); });
        RequireAtMost(kCode, pan, m_count);
    }

    void GenerateLow() {
        const Words pan = Codes(m_count), panAt0 = Samples(m_cells), panAt1 = Samples(m_cells),
                    colour0 = Samples(m_cells), colour1 = Samples(m_cells), lowColour = Codes(m_cells);
        const Fixed lowPan = Differences(m_cells), difference = Differences(m_cells);
        Expect(true, 4 * m_cells, [&] {
            return Alg_GenerateLow(pan, panAt0, panAt1, colour0, colour1, m_width, m_height, lowPan, lowColour,
                                   difference, m_to);
        });
        RequireAtMost(kCode, lowColour, m_cells);
    }

    void FilterImpulses() {
        const Fixed plane = Differences(m_count);
        const int32_t type = m_input.Below(8) ? 5 : m_input.Take<int32_t>(), step = DrawSmall();
        Expect(type == 5, step < 1 ? 0 : 4 * m_count,
               [&] { return Alg_ImpulseFilter(plane, type, m_width, m_height, step, m_to); });
    }

    void Clean() {
        float gains[5];
        for (int i = 0; i < 5; ++i) gains[i] = (i == 0 ? 1 : gains[i - 1]) + static_cast<float>(m_input.Below(8));
        const Reals<5> slopes(m_input), intercepts(m_input), g(m_input);
        const Reals<3> s(m_input);
        const int32_t r[] = {DrawSmall(), DrawSmall(), DrawSmall()};
        const Fixed difference = Differences(m_count), lowPan = Differences(m_count);
        const Words colour = Codes(m_count);
        Expect(true, 14 * m_count, [&] {
            return Alg_LowColorDiffClean(colour, difference, m_width, m_height, g[0], g[1], g[2], g[3], g[4], gains,
                                         slopes, intercepts, s[0], s[1], s[2], r[0], r[1], r[2], m_to);
        });
        Expect(true, 8 * m_count, [&] {
            return Alg_LowPanClean(lowPan, m_width, m_height, g[0], g[4], gains, slopes, intercepts, s[0], s[1], s[2],
                                   r[0], r[1], r[2], m_to);
        });
    }

    void FilterWithThresholds() {
        const Fixed plane = Differences(m_count), copy = Differences(m_count), thresholds(m_input, m_count, 0, kFixed);
        const Words colour = Codes(m_count);
        const Reals<4> r(m_input);
        const bool isPan = m_input.Flag();
        Expect(true, 0, [&] {
            return isPan ? Alg_PanBuildGammaNoiseThreshold(copy, m_width, m_height, r[0], r[1], r[2], r[3], thresholds,
                                                           m_to)
                         : Alg_ColorBuildGammaNoiseThreshold(colour, m_width, m_height, r[0], r[1], r[2], r[3],
                                                             thresholds, m_to);
        });
        Require(std::all_of(+thresholds, thresholds + m_count, [](int32_t value) { return value >= 0; }),
                "thresholds are not negative");
        const int32_t radius = DrawSmall();
        Expect(true, 0,
               [&] { return Alg_IterativeSigmaFilter(plane, copy, m_width, m_height, radius, thresholds, m_to); });
        Require(m_count == 0 || radius < 1 || std::equal(+plane, plane + m_count, +copy), "both receive the result");
    }

    void UpSample() {
        const Fixed low = Differences(m_count), red = Differences(4 * m_count), green = Differences(4 * m_count),
                    blue = Differences(4 * m_count);
        Expect(
            m_pattern >= 0 && m_pattern < 4, 16 * m_count,
            [&] { return Alg_LowColorDiffUpSample(low, m_width, m_height, m_pattern, red, green, blue, m_to); },
            12 * m_count);
        Expect(true, 16 * m_count, [&] { return Alg_LowPanUpSample(low, m_width, m_height, red, m_to); });
    }

    void Convolve() {
        const auto drawTaps = [this] { return static_cast<int32_t>(m_input.Below(14)) - 2; };
        const int32_t columns = drawTaps(), rows = drawTaps(), direction = DrawSmall();
        const Fixed plane = Differences(m_count);
        const Words words(m_input, m_count, 0, UINT16_MAX);
        const int64_t coefficients = std::max(CountOf(columns, rows), int64_t{std::max(columns, 0)});
        const Plane<float> kernel(m_input, coefficients, INT32_MIN, INT32_MAX);
        const bool isOdd = columns > 0 && columns % 2 == 1, areOdd = isOdd && rows > 0 && rows % 2 == 1;
        Expect(isOdd || m_count == 0, isOdd ? 4 * m_count : 0,
               [&] { return Alg_Convolve1D(plane, m_width, m_height, kernel, columns, direction, m_to); });
        Expect(areOdd || m_count == 0, areOdd ? 2 * m_count : 0,
               [&] { return Alg_Convolve2D(words, m_width, m_height, kernel, columns, rows, m_to); });
    }

    void Finish() {
        const Fixed red = Differences(m_count), green = Differences(m_count), blue = Differences(m_count),
                    lowPan = Differences(m_count);
        const Words tone(m_input, 4096, 0, UINT16_MAX), pan = Codes(m_count);
        const Bytes rgb(m_input, 3 * m_count, 0, 255);
        const Reals<9> m(m_input);
        Expect(true, 0, [&] {
            return Alg_ColorCorrection(red, green, blue, lowPan, m_width, m_height, m[0], m[1], m[2], m[3], m[4], m[5],
                                       m[6], m[7], m[8], rgb, tone, m_to);
        });
        const auto sharpen = [&] {
            return Alg_Sharpness(rgb, pan, lowPan, m_width, m_height, m[0], m[1], m[2], m[3], tone, m_to);
        };
        Expect(true, 4 * m_count, sharpen, 4 * m_count, 4 * m_count);
    }

    /** A part of a plane as text, and the checksum of the plane. */
    void Diagnose() {
        const int32_t type = m_input.Below(8) ? static_cast<int32_t>(m_input.Below(6)) : m_input.Take<int32_t>();
        constexpr int bytesOfType[] = {1, 2, 2, 3, 6, 4};
        const int64_t bytes = type >= 0 && type < 6 ? bytesOfType[type] : 0;
        const Bytes plane(m_input, bytes * m_count, 0, 255);
        int32_t region[4];
        for (int32_t& number : region)
            number = m_input.Below(16) ? static_cast<int32_t>(m_input.Below(10)) : m_input.Take<int32_t>();
        const bool isPart = region[2] < m_width && region[3] < m_height;
        const int64_t values = isPart ? CountOf(region[2], region[3]) : 0;
        if (values > m_count) return;
        const GuardedBuffer text(static_cast<size_t>(kLogBytes + 14 * 3 * values));
        LogText_t log{reinterpret_cast<char*>(text.Data()), 0};
        const int32_t result = Alg_GetRegionData("plane", static_cast<uint8_t*>(plane), type, region[0], region[1],
                                                 region[2], region[3], m_width, m_height, &log);
        Require(result == 0 || result == -1, "a documented result");
        Require(log.length > 0 && std::strlen(log.text) == log.length, "the log has what was written");
        if (m_count > 0) calcHash(static_cast<uint8_t*>(plane), static_cast<int32_t>(bytes) * m_width, m_height, 0);
    }

    Input& m_input;
    int32_t m_width, m_height;
    int64_t m_count, m_cells;  // of the frame's plane, of one of half the resolution
    int32_t m_pattern;
    GuardedBuffer m_text;
    LogText_t m_log;
    LogText_t* m_to;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Input input(data, size);
    Stages(input).Run();
    return 0;
}
