#include "demosaicers/GentleTone.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "demosaicers/GentleTone.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kvx::HWY_NAMESPACE {
namespace {
namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_AVX3_DL  // has lookups in 128 bytes

using Bytes = hn::ScalableTag<uint8_t>;
using V = hn::Vec<Bytes>;

class Table256 {
public:
    explicit Table256(const std::array<uint8_t, 256>& entries) {
        for (size_t i = 0; i < 4; ++i) m_quarters[i] = hn::LoadU(Bytes(), entries.data() + 64 * i);
    }
    V operator[](V index) const {
        const V lower{_mm512_permutex2var_epi8(m_quarters[0].raw, index.raw, m_quarters[1].raw)};
        const V upper{_mm512_permutex2var_epi8(m_quarters[2].raw, index.raw, m_quarters[3].raw)};
        return hn::IfThenElse(hn::MaskFromVec(index), upper, lower);  // by the index's top bit
    }

private:
    V m_quarters[4];
};

size_t Store(const std::array<const uint16_t*, kChannels>& indices, const GentleTone& tone, size_t count,
             uint8_t* dst) {
    const Bytes d;
    const hn::Repartition<uint16_t, Bytes> words;
    const Table256 first(tone.first), lowerRises(tone.lowerRises), upperRises(tone.upperRises);
    alignas(16) constexpr uint8_t upTo[2][16] = {
        // masks of the rises from a run's start to an entry
        {1, 3, 7, 15, 31, 63, 127, 255, 255, 255, 255, 255, 255, 255, 255, 255},
        {0, 0, 0, 0, 0, 0, 0, 0, 1, 3, 7, 15, 31, 63, 127, 255}};
    const V lowerUpTo = hn::LoadDup128(d, upTo[0]), upperUpTo = hn::LoadDup128(d, upTo[1]);
    const V entryMask = hn::Set(d, uint8_t{15});

    const auto valueAt = [&](const uint16_t* index) {
        const auto a = hn::LoadU(words, index), b = hn::LoadU(words, index + hn::Lanes(words));
        const V run = hn::ConcatEven(d, hn::BitCast(d, hn::ShiftRight<4>(b)), hn::BitCast(d, hn::ShiftRight<4>(a)));
        const V entry = hn::And(hn::ConcatEven(d, hn::BitCast(d, b), hn::BitCast(d, a)), entryMask);
        const V lower = hn::And(lowerRises[run], hn::TableLookupBytes(lowerUpTo, entry));
        const V upper = hn::And(upperRises[run], hn::TableLookupBytes(upperUpTo, entry));
        return hn::Add(first[run], hn::Add(hn::PopulationCount(lower), hn::PopulationCount(upper)));
    };
    size_t i = 0;
    for (; i + hn::Lanes(d) <= count; i += hn::Lanes(d))
        hn::StoreInterleaved3(valueAt(indices[0] + i), valueAt(indices[1] + i), valueAt(indices[2] + i), d,
                              dst + kChannels * i);
    return i;
}

#else

size_t Store(const std::array<const uint16_t*, kChannels>&, const GentleTone&, size_t, uint8_t*) {
    return 0;
}

#endif

}  // namespace
}  // namespace kvx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx {

HWY_EXPORT(Store);

GentleTone GentleToneOf(const std::array<uint8_t, KVX_TONE_TABLE_SIZE>& table) {
    constexpr size_t run = 16;
    GentleTone tone{};
    for (size_t i = 0; i < table.size(); ++i) {
        if (i % run == 0) {
            tone.first[i / run] = table[i];
            continue;
        }
        const int rise = table[i] - table[i - 1];
        if (rise != 0 && rise != 1) return tone;
        auto& rises = i % run < 8 ? tone.lowerRises : tone.upperRises;
        rises[i / run] = static_cast<uint8_t>(rises[i / run] | rise << i % 8);
    }
    tone.isUsable = true;
    return tone;
}

size_t StoreGentleTones(const std::array<const uint16_t*, kChannels>& indices, const GentleTone& tone, size_t count,
                        uint8_t* dst) {
    return HWY_DYNAMIC_DISPATCH(Store)(indices, tone, count, dst);
}

}  // namespace kvx
#endif
