#include "demosaicers/interpolation/HalfMosaic.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "demosaicers/interpolation/HalfMosaic.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "demosaicers/interpolation/TrueSenseLanes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::HWY_NAMESPACE {
namespace {

void Reduce16(const HalfRows<int16_t>& even, const HalfRows<int16_t>& odd, size_t sites, int16_t* pan0, int16_t* pan1,
              int16_t* half) {
    const hn::ScalableTag<int16_t> d;
    for (size_t j = 0; j < sites; j += hn::Lanes(d)) {
        const auto sum = hn::Add(hn::LoadU(d, even.difference + j), hn::LoadU(d, odd.difference + j));
        const auto atPan = hn::ShiftRight<1>(sum);
        hn::StoreU(hn::ShiftRight<2>(hn::Neg(hn::Add(sum, hn::Add(atPan, atPan)))), d, half + j);
        StoreColumns(d, hn::LoadU(d, even.pan + j), hn::LoadU(d, even.panAtColour + j), pan0 + 2 * j);
        StoreColumns(d, hn::LoadU(d, odd.panAtColour + j), hn::LoadU(d, odd.pan + j), pan1 + 2 * j);
    }
}

void Reduce32(const HalfRows<int32_t>& even, const HalfRows<int32_t>& odd, size_t sites, int16_t* pan0, int16_t* pan1,
              int16_t* half) {
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
        hn::StoreU(hn::DemoteTo(words, block), words, half + j);
        StoreColumns(d, hn::LoadU(d, even.pan + j), hn::LoadU(d, even.panAtColour + j), pan0 + 2 * j);
        StoreColumns(d, hn::LoadU(d, odd.panAtColour + j), hn::LoadU(d, odd.pan + j), pan1 + 2 * j);
    }
}

void AddPanToDifferences(const int16_t* pan, const int16_t* differences, size_t count, int16_t* const planes[3]) {
    const hn::ScalableTag<int16_t> d;
    size_t i = 0;
    for (; i + hn::Lanes(d) <= count; i += hn::Lanes(d)) {
        hn::Vec<decltype(d)> red, green, blue;
        hn::LoadInterleaved3(d, differences + 3 * i, red, green, blue);
        const auto here = hn::LoadU(d, pan + i);
        hn::StoreU(hn::Add(here, red), d, planes[0] + i);
        hn::StoreU(hn::Add(here, green), d, planes[1] + i);
        hn::StoreU(hn::Add(here, blue), d, planes[2] + i);
    }
    for (; i < count; ++i)
        for (size_t channel = 0; channel < 3; ++channel)
            planes[channel][i] = static_cast<int16_t>(pan[i] + differences[3 * i + channel]);
}

}  // namespace
}  // namespace kvx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx {

HWY_EXPORT(Reduce16);
HWY_EXPORT(Reduce32);
HWY_EXPORT(AddPanToDifferences);

void ReduceRowPair(const HalfRows<int16_t>& even, const HalfRows<int16_t>& odd, size_t sites, int16_t* pan0,
                   int16_t* pan1, int16_t* half) {
    HWY_DYNAMIC_DISPATCH(Reduce16)(even, odd, sites, pan0, pan1, half);
}
void ReduceRowPair(const HalfRows<int32_t>& even, const HalfRows<int32_t>& odd, size_t sites, int16_t* pan0,
                   int16_t* pan1, int16_t* half) {
    HWY_DYNAMIC_DISPATCH(Reduce32)(even, odd, sites, pan0, pan1, half);
}
void AddPan(const int16_t* pan, const int16_t* differences, size_t count, int16_t* const planes[3]) {
    HWY_DYNAMIC_DISPATCH(AddPanToDifferences)(pan, differences, count, planes);
}

}  // namespace kvx
#endif
