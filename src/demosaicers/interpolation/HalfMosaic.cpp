#include "demosaicers/interpolation/HalfMosaic.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "demosaicers/interpolation/HalfMosaic.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "demosaicers/interpolation/TrueSenseLanes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::HWY_NAMESPACE {
namespace {

template <class V>
HWY_INLINE void StoreMoved(V differences, uint16_t* out) {
    const hn::DFromV<V> d;
    const hn::RebindToUnsigned<decltype(d)> words;
    hn::StoreU(hn::Xor(hn::BitCast(words, differences), hn::Set(words, uint16_t{kDifferenceZero})), words, out);
}

void Reduce16(const HalfRows<int16_t>& even, const HalfRows<int16_t>& odd, size_t sites, int16_t* pan0, int16_t* pan1,
              uint16_t* half) {
    const hn::ScalableTag<int16_t> d;
    for (size_t j = 0; j < sites; j += hn::Lanes(d)) {
        const auto sum = hn::Add(hn::LoadU(d, even.difference + j), hn::LoadU(d, odd.difference + j));
        const auto atPan = hn::ShiftRight<1>(sum);
        StoreMoved(hn::ShiftRight<2>(hn::Neg(hn::Add(sum, hn::Add(atPan, atPan)))), half + j);
        StoreColumns(d, hn::LoadU(d, even.pan + j), hn::LoadU(d, even.panAtColour + j), pan0 + 2 * j);
        StoreColumns(d, hn::LoadU(d, odd.panAtColour + j), hn::LoadU(d, odd.pan + j), pan1 + 2 * j);
    }
}

void Reduce32(const HalfRows<int32_t>& even, const HalfRows<int32_t>& odd, size_t sites, int16_t* pan0, int16_t* pan1,
              uint16_t* half) {
    const hn::ScalableTag<int32_t> d;
    const hn::Rebind<int16_t, decltype(d)> words;
    // colour - pan, saturated as 16-bit matrices are
    const auto saturated = [=](auto v) { return hn::Min(hn::Max(v, hn::Set(d, -32768)), hn::Set(d, 32767)); };
    for (size_t j = 0; j < sites; j += hn::Lanes(d)) {
        const auto atColour0 = hn::LoadU(d, even.difference + j), atColour1 = hn::LoadU(d, odd.difference + j);
        const auto mean = hn::ShiftRight<1>(hn::Add(atColour0, atColour1));
        const auto atPan0 = StoredDifference(d, hn::LoadU(d, even.pan + j), mean);
        const auto atPan1 = StoredDifference(d, hn::LoadU(d, odd.pan + j), mean);
        const auto block = MeanOfFour(saturated(hn::Neg(atColour0)), saturated(hn::Neg(atColour1)),
                                      saturated(hn::Neg(atPan0)), saturated(hn::Neg(atPan1)));
        StoreMoved(hn::DemoteTo(words, block), half + j);
        StoreColumns(d, hn::LoadU(d, even.pan + j), hn::LoadU(d, even.panAtColour + j), pan0 + 2 * j);
        StoreColumns(d, hn::LoadU(d, odd.panAtColour + j), hn::LoadU(d, odd.pan + j), pan1 + 2 * j);
    }
}

/** Sixteenths to whole numbers, half to even. */
template <class V>
HWY_INLINE V Sixteenth(V sum) {
    const hn::DFromV<V> d;
    const V odd = hn::And(hn::ShiftRight<4>(sum), hn::Set(d, 1));
    return hn::ShiftRight<4>(hn::Add(sum, hn::Add(odd, hn::Set(d, 7))));
}

void ScaleUp(const uint16_t* near, const uint16_t* far, const int16_t* pan, size_t sites, int32_t* sums,
             int16_t* plane) {
    const hn::ScalableTag<int32_t> d;
    const hn::Rebind<uint16_t, decltype(d)> half;
    const hn::Repartition<int16_t, decltype(d)> words;
    const auto times3 = [](auto v) { return hn::Add(v, hn::Add(v, v)); };
    for (size_t j = 0; j < sites; j += hn::Lanes(d)) {
        const auto load = [&](const uint16_t* row) { return hn::PromoteTo(d, hn::LoadU(half, row + j)); };
        hn::StoreU(hn::Add(times3(load(near)), load(far)), d, sums + j);
    }
    sums[-1] = sums[0];
    sums[sites] = sums[sites - 1];
    const auto zero = hn::Set(words, static_cast<int16_t>(-kDifferenceZero));
    for (size_t j = 0; j < sites; j += hn::Lanes(d)) {
        const auto here = times3(hn::LoadU(d, sums + j));
        const auto left = Sixteenth(hn::Add(here, hn::LoadU(d, sums + j - 1)));
        const auto right = Sixteenth(hn::Add(here, hn::LoadU(d, sums + j + 1)));
        const auto pairs = hn::OddEven(hn::BitCast(words, hn::ShiftLeft<16>(right)), hn::BitCast(words, left));
        const auto difference = hn::Xor(pairs, zero);
        hn::StoreU(hn::Add(hn::LoadU(words, pan + 2 * j), difference), words, plane + 2 * j);
    }
}

}  // namespace
}  // namespace kvx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx {

HWY_EXPORT(Reduce16);
HWY_EXPORT(Reduce32);
HWY_EXPORT(ScaleUp);

void ReduceRowPair(const HalfRows<int16_t>& even, const HalfRows<int16_t>& odd, size_t sites, int16_t* pan0,
                   int16_t* pan1, uint16_t* half) {
    HWY_DYNAMIC_DISPATCH(Reduce16)(even, odd, sites, pan0, pan1, half);
}
void ReduceRowPair(const HalfRows<int32_t>& even, const HalfRows<int32_t>& odd, size_t sites, int16_t* pan0,
                   int16_t* pan1, uint16_t* half) {
    HWY_DYNAMIC_DISPATCH(Reduce32)(even, odd, sites, pan0, pan1, half);
}
void AddScaledUp(const uint16_t* near, const uint16_t* far, const int16_t* pan, size_t sites, int32_t* sums,
                 int16_t* plane) {
    HWY_DYNAMIC_DISPATCH(ScaleUp)(near, far, pan, sites, sums, plane);
}

}  // namespace kvx
#endif
