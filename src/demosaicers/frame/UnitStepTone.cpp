#include "demosaicers/frame/UnitStepTone.h"

#include <cstdlib>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "demosaicers/frame/UnitStepTone.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kvx::HWY_NAMESPACE {
namespace {

#if HWY_TARGET == HWY_AVX3_DL  // has lookups in 128 bytes

namespace hn = hwy::HWY_NAMESPACE;

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

/** Four-byte pixels, of which the fourth byte is not written. */
void StoreThreeOfFour(V red, V green, V blue, uint8_t* dst) {
    const Bytes d;
    HWY_ALIGN uint8_t bytes[4 * hn::MaxLanes(Bytes())];
    hn::StoreInterleaved4(red, green, blue, hn::Zero(d), d, bytes);
    const hn::Repartition<uint32_t, Bytes> pixels;
    const auto three = hn::MaskFromVec(hn::BitCast(d, hn::Set(pixels, 0x00FFFFFFu)));
    for (size_t at = 0; at < sizeof bytes; at += hn::Lanes(d))
        hn::BlendedStore(hn::Load(d, bytes + at), three, d, dst + at);
}

size_t Store(const std::array<const uint16_t*, kChannels>& indices, const UnitStepTone& tone, size_t count,
             ptrdiff_t pixelStep, uint8_t* dst) {
    const Bytes d;
    const hn::Repartition<uint16_t, Bytes> words;
    const Table256 first(tone.first), lowerRises(tone.lowerRises), upperRises(tone.upperRises);
    alignas(16) constexpr uint8_t upTo[2][16] = {
        // masks of the rises from a run's start to an entry
        {1, 3, 7, 15, 31, 63, 127, 255, 255, 255, 255, 255, 255, 255, 255, 255},
        {0, 0, 0, 0, 0, 0, 0, 0, 1, 3, 7, 15, 31, 63, 127, 255}};
    const V lowerUpTo = hn::LoadDup128(d, upTo[0]), upperUpTo = hn::LoadDup128(d, upTo[1]);
    const V entryMask = hn::Set(d, uint8_t{15});

    const bool isBackwards = pixelStep < 0, hasFourth = std::abs(pixelStep) == 4;
    const auto load = [&](const uint16_t* index) {
        const auto v = hn::LoadU(words, index);
        return isBackwards ? hn::Reverse(words, v) : v;
    };
    const auto valueAt = [&](const uint16_t* index) {
        const size_t next = hn::Lanes(words);
        const auto a = load(isBackwards ? index + next : index), b = load(isBackwards ? index : index + next);
        const V run = hn::ConcatEven(d, hn::BitCast(d, hn::ShiftRight<4>(b)), hn::BitCast(d, hn::ShiftRight<4>(a)));
        const V entry = hn::And(hn::ConcatEven(d, hn::BitCast(d, b), hn::BitCast(d, a)), entryMask);
        const V lower = hn::And(lowerRises[run], hn::TableLookupBytes(lowerUpTo, entry));
        const V upper = hn::And(upperRises[run], hn::TableLookupBytes(upperUpTo, entry));
        return hn::Add(first[run], hn::Add(hn::PopulationCount(lower), hn::PopulationCount(upper)));
    };
    const auto lanes = static_cast<ptrdiff_t>(hn::Lanes(d));
    size_t i = 0;
    for (; i + hn::Lanes(d) <= count; i += hn::Lanes(d), dst += lanes * pixelStep) {
        const V red = valueAt(indices[0] + i), green = valueAt(indices[1] + i), blue = valueAt(indices[2] + i);
        uint8_t* lowest = isBackwards ? dst + (lanes - 1) * pixelStep : dst;
        if (hasFourth)
            StoreThreeOfFour(red, green, blue, lowest);
        else
            hn::StoreInterleaved3(red, green, blue, d, lowest);
    }
    return i;
}

#else

size_t Store(const std::array<const uint16_t*, kChannels>&, const UnitStepTone&, size_t, ptrdiff_t, uint8_t*) {
    return 0;
}

#endif

}  // namespace
}  // namespace kvx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx {

HWY_EXPORT(Store);

UnitStepTone UnitStepToneOf(const std::array<uint8_t, KVX_TONE_TABLE_SIZE>& table) {
    constexpr size_t run = 16;
    UnitStepTone tone{};
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

size_t StoreUnitStepTones(const std::array<const uint16_t*, kChannels>& indices, const UnitStepTone& tone, size_t count,
                          ptrdiff_t pixelStep, uint8_t* dst) {
    return HWY_DYNAMIC_DISPATCH(Store)(indices, tone, count, pixelStep, dst);
}

}  // namespace kvx
#endif
