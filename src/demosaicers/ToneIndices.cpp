#include "demosaicers/ToneIndices.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "demosaicers/ToneIndices.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kvx::HWY_NAMESPACE {
namespace {
namespace hn = hwy::HWY_NAMESPACE;

void Clamp(const int16_t* const planes[kChannels], size_t count, uint16_t* const indices[kChannels]) {
    const hn::ScalableTag<int16_t> d;
    const hn::RebindToUnsigned<decltype(d)> unsignedLanes;
    const auto lowest = hn::Zero(d), highest = hn::Set(d, int16_t{KVX_TONE_TABLE_SIZE - 1});
    for (int channel = 0; channel < kChannels; ++channel)
        for (size_t i = 0; i < count; i += hn::Lanes(d)) {
            const auto value = hn::Min(hn::Max(hn::LoadU(d, planes[channel] + i), lowest), highest);
            hn::StoreU(hn::BitCast(unsignedLanes, value), unsignedLanes, indices[channel] + i);
        }
}

void MatrixAndClamp(const int16_t* const planes[kChannels], const ColourMatrix& matrix, size_t count,
                    uint16_t* const indices[kChannels]) {
    const hn::ScalableTag<double> d;
    const hn::Rebind<int32_t, decltype(d)> words;
    const hn::Rebind<int16_t, decltype(d)> samples;
    const hn::Rebind<uint16_t, decltype(d)> results;
    const auto zero = hn::Zero(d), highest = hn::Set(d, double{KVX_TONE_TABLE_SIZE - 1});
    const auto load = [=](const int16_t* at) { return hn::PromoteTo(d, hn::PromoteTo(words, hn::LoadU(samples, at))); };
    for (size_t i = 0; i < count; i += hn::Lanes(d)) {
        const auto red = load(planes[0] + i), green = load(planes[1] + i), blue = load(planes[2] + i);
        for (int channel = 0; channel < kChannels; ++channel) {
            const auto at = [&](int input) { return hn::Set(d, matrix[channel * kChannels + input]); };
            const auto sum = hn::Add(hn::Add(hn::Mul(at(0), red), hn::Mul(at(1), green)), hn::Mul(at(2), blue));
            // What is not a number fails the comparison, and becomes 0 like every negative sum.
            const auto value = hn::Min(hn::IfThenElseZero(hn::Gt(sum, zero), sum), highest);
            hn::StoreU(hn::DemoteTo(results, hn::DemoteTo(words, value)), results, indices[channel] + i);
        }
    }
}

}  // namespace
}  // namespace kvx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx {

HWY_EXPORT(Clamp);
HWY_EXPORT(MatrixAndClamp);

void ToneIndices(const int16_t* const planes[kChannels], size_t count, uint16_t* const indices[kChannels]) {
    HWY_DYNAMIC_DISPATCH(Clamp)(planes, count, indices);
}
void ToneIndices(const int16_t* const planes[kChannels], const ColourMatrix& matrix, size_t count,
                 uint16_t* const indices[kChannels]) {
    HWY_DYNAMIC_DISPATCH(MatrixAndClamp)(planes, matrix, count, indices);
}

}  // namespace kvx
#endif
