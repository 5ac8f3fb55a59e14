#include "KvxBayer/ipp/SampleRow.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "KvxBayer/ipp/SampleRow.cpp"
#include <hwy/foreach_target.h>  // compiles this file once per instruction set

#include "KvxBayer/ipp/Vectors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::ipp::HWY_NAMESPACE {
namespace {

#if HWY_TARGET == HWY_SCALAR

// One lane has no halves to keep two words in.

template <class Sample>
void Unpack(const Sample* samples, const SampleScale& scale, int lanes, const PairRow& row) {
    const auto value = [&](Sample sample) {
        return static_cast<float>(std::min<int>(sample, scale.maximum)) * scale.toUnit;
    };
    for (int i = 0; i < lanes; ++i) {
        row.even[i] = value(samples[2 * i]);
        row.odd[i] = value(samples[2 * i + 1]);
    }
}

struct StoreWords {
    using Sample = uint16_t;
    static constexpr int kChannels = 3;
    uint16_t operator()(int word) const {
        return static_cast<uint16_t>(word);
    }
};

template <int kSamples>
struct StoreShifted {
    using Sample = uint8_t;
    static constexpr int kChannels = kSamples;
    int shift;
    uint8_t operator()(int word) const {
        return static_cast<uint8_t>(word >> shift);
    }
};

struct StoreRounded {
    using Sample = uint8_t;
    static constexpr int kChannels = 3;
    int shift;
    uint8_t operator()(int word) const {
        const int odd = (word >> shift) & 1;  // a half goes to the even neighbour
        return static_cast<uint8_t>(std::min((word + (1 << (shift - 1)) - 1 + odd) >> shift, 255));
    }
};

int WordAt(const float* values, int i, const SampleScale& scale) {
    return static_cast<int>(std::clamp(values[i] * scale.fromUnit, 0.0f, static_cast<float>(scale.maximum)) + 0.5f);
}

template <class StoreForm>
void Pack(const PairRow channels[3], int firstLane, int lanes, const SampleScale& scale, const StoreForm& store,
          uint8_t* out) {
    auto* samples = reinterpret_cast<typename StoreForm::Sample*>(out);
    for (int i = firstLane; i < firstLane + lanes; ++i)
        for (float* PairRow::*column : {&PairRow::even, &PairRow::odd}) {
            for (int channel = 0; channel < 3; ++channel)
                *samples++ = store(WordAt(channels[channel].*column, i, scale));
            if (StoreForm::kChannels == 4) *samples++ = 255;
        }
}

void PackPlanes(const PairRow channels[3], int firstLane, int lanes, const SampleScale& scale,
                uint16_t* const planes[3]) {
    for (int channel = 0; channel < 3; ++channel)
        for (int i = 0; i < lanes; ++i) {
            planes[channel][2 * i] = static_cast<uint16_t>(WordAt(channels[channel].even, firstLane + i, scale));
            planes[channel][2 * i + 1] = static_cast<uint16_t>(WordAt(channels[channel].odd, firstLane + i, scale));
        }
}

#else

using Integers = hn::RebindToSigned<Floats>;
using Words = hn::Repartition<uint16_t, Floats>;
using Bytes = hn::Rebind<uint8_t, Words>;
using WordVec = hn::Vec<Words>;
constexpr Integers kIntegers;
constexpr Words kWords;
constexpr Bytes kBytes;

// A word of an even column and the next one, of an odd column, are the halves of one 32-bit lane.

HWY_INLINE WordVec LoadWords(const uint16_t* samples) {
    return hn::LoadU(kWords, samples);
}
HWY_INLINE WordVec LoadWords(const uint8_t* samples) {
    return hn::PromoteTo(kWords, hn::LoadU(kBytes, samples));
}

template <class Sample>
void Unpack(const Sample* samples, const SampleScale& scale, int lanes, const PairRow& row) {
    const auto maximum = hn::Set(kWords, scale.maximum);
    const auto lowHalf = hn::Set(kIntegers, 0xFFFF);
    const Vec toUnit = Set(scale.toUnit);
    for (int i = 0; i < lanes; i += kStep) {
        const auto pairs = hn::BitCast(kIntegers, hn::Min(LoadWords(samples + 2 * i), maximum));
        const auto odd = hn::And(hn::ShiftRight<16>(pairs), lowHalf);
        Store(Vec{hn::ConvertTo(Floats(), hn::And(pairs, lowHalf))} * toUnit, row.even + i);
        Store(Vec{hn::ConvertTo(Floats(), odd)} * toUnit, row.odd + i);
    }
}

struct StoreWords {
    static constexpr int kPixelBytes = 6;
    HWY_INLINE void operator()(WordVec a, WordVec b, WordVec c, uint8_t* out) const {
        hn::StoreInterleaved3(a, b, c, kWords, reinterpret_cast<uint16_t*>(out));
    }
};

template <int kChannels>
struct StoreShifted {
    static constexpr int kPixelBytes = kChannels;
    int shift;
    HWY_INLINE auto Reduced(WordVec words) const {
        return hn::TruncateTo(kBytes, hn::ShiftRightSame(words, shift));
    }
    HWY_INLINE void operator()(WordVec a, WordVec b, WordVec c, uint8_t* out) const {
        if constexpr (kChannels == 4)
            hn::StoreInterleaved4(Reduced(a), Reduced(b), Reduced(c), hn::Set(kBytes, 255), kBytes, out);
        else
            hn::StoreInterleaved3(Reduced(a), Reduced(b), Reduced(c), kBytes, out);
    }
};

struct StoreRounded {
    static constexpr int kPixelBytes = 3;
    int shift;
    HWY_INLINE auto Reduced(WordVec words) const {
        const auto one = hn::Set(kWords, uint16_t{1});
        const auto belowHalf = hn::Set(kWords, static_cast<uint16_t>((1 << (shift - 1)) - 1));
        const auto odd = hn::And(hn::ShiftRightSame(words, shift), one);  // a half goes to the even neighbour
        const auto sum = hn::SaturatedAdd(words, hn::Add(belowHalf, odd));
        return hn::TruncateTo(kBytes, hn::Min(hn::ShiftRightSame(sum, shift), hn::Set(kWords, uint16_t{255})));
    }
    HWY_INLINE void operator()(WordVec a, WordVec b, WordVec c, uint8_t* out) const {
        hn::StoreInterleaved3(Reduced(a), Reduced(b), Reduced(c), kBytes, out);
    }
};

/** Two columns of words for each lane. */
class WordsOfLanes {
public:
    explicit WordsOfLanes(const SampleScale& scale) : m_fromUnit(Set(scale.fromUnit)), m_maximum(Set(scale.maximum)) {}

    HWY_INLINE WordVec operator()(const PairRow& row, int lane) const {
        return hn::BitCast(kWords, hn::Or(Integer(row.even + lane), hn::ShiftLeft<16>(Integer(row.odd + lane))));
    }

private:
    HWY_INLINE hn::Vec<Integers> Integer(const float* values) const {
        const Vec rounded = Clamped(Load(values) * m_fromUnit, Set(0.0f), m_maximum) + Set(0.5f);
        return hn::ConvertTo(kIntegers, rounded.raw);
    }

    Vec m_fromUnit, m_maximum;
};

template <class StoreForm>
void Pack(const PairRow channels[3], int firstLane, int lanes, const SampleScale& scale, const StoreForm& store,
          uint8_t* out) {
    const WordsOfLanes words(scale);
    for (int i = 0; i < lanes; i += kStep) {
        const int lane = firstLane + i;
        store(words(channels[0], lane), words(channels[1], lane), words(channels[2], lane),
              out + 2 * i * StoreForm::kPixelBytes);
    }
}

void PackPlanes(const PairRow channels[3], int firstLane, int lanes, const SampleScale& scale,
                uint16_t* const planes[3]) {
    const WordsOfLanes words(scale);
    for (int channel = 0; channel < 3; ++channel)
        for (int i = 0; i < lanes; i += kStep)
            hn::StoreU(words(channels[channel], firstLane + i), kWords, planes[channel] + ptrdiff_t{2} * i);
}

#endif

void UnpackRow(const void* samples, const SampleScale& scale, int lanes, const PairRow& row) {
    if (scale.sampleBytes == 1)
        Unpack(static_cast<const uint8_t*>(samples), scale, lanes, row);
    else
        Unpack(static_cast<const uint16_t*>(samples), scale, lanes, row);
}

void PackRow(const PairRow channels[3], int firstLane, int lanes, const SampleScale& scale, const BayerOutput& output,
             uint8_t* out) {
    const auto pack = [&](const auto& store) { Pack(channels, firstLane, lanes, scale, store, out); };
    if (output.form == BayerOutput::RoundedBytes) return pack(StoreRounded{output.shift});
    if (output.form == BayerOutput::Samples && scale.sampleBytes == 2) return pack(StoreWords());
    if (output.pixel == BayerPixel::WithAlpha) return pack(StoreShifted<4>{output.shift});
    pack(StoreShifted<3>{output.shift});
}

}  // namespace
}  // namespace kvx::ipp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx::ipp {
HWY_EXPORT(UnpackRow);
HWY_EXPORT(PackRow);
HWY_EXPORT(PackPlanes);

void UnpackRow(const void* samples, const SampleScale& scale, int lanes, const PairRow& row) {
    HWY_DYNAMIC_DISPATCH(UnpackRow)(samples, scale, lanes, row);
}

void PackRow(const PairRow channels[3], int firstLane, int lanes, const SampleScale& scale, const BayerOutput& output,
             uint8_t* out) {
    HWY_DYNAMIC_DISPATCH(PackRow)(channels, firstLane, lanes, scale, output, out);
}

void PackPlanes(const PairRow channels[3], int firstLane, int lanes, const SampleScale& scale,
                uint16_t* const planes[3]) {
    HWY_DYNAMIC_DISPATCH(PackPlanes)(channels, firstLane, lanes, scale, planes);
}
}  // namespace kvx::ipp
#endif
