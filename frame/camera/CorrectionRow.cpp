#include "frame/camera/CorrectionRow.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "frame/camera/CorrectionRow.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "frame/finish/Balance-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::frame::HWY_NAMESPACE {
namespace {

const hn::ScalableTag<uint16_t> d16;
const hn::ScalableTag<int16_t> dSigned16;
using Samples = hn::Vec<decltype(d16)>;

/** Moved by half the range, signed saturation is that of unsigned numbers. */
Samples WithoutPattern(Samples values, const int16_t* pattern) {
    const auto sign = hn::Set(d16, 0x8000);
    const auto moved = hn::BitCast(dSigned16, hn::Xor(values, sign));
    return hn::Xor(hn::BitCast(d16, hn::SaturatedSub(moved, hn::LoadU(dSigned16, pattern))), sign);
}

Samples Unshaded(Samples light, const int16_t* upperGains, const int16_t* lowerGains,
                 hn::Vec<decltype(dSigned16)> weight) {
    const auto upper = hn::LoadU(dSigned16, upperGains), lower = hn::LoadU(dSigned16, lowerGains);
    const auto gains = hn::BitCast(d16, hn::Add(upper, hn::MulFixedPoint15(hn::Sub(lower, upper), weight)));
    const auto high = hn::MulHigh(light, gains), low = hn::Mul(light, gains);
    const auto overflow = hn::VecFromMask(d16, hn::Gt(high, hn::Set(d16, (1u << kShadingPlaces) - 1)));
    return hn::Or(hn::Or(hn::ShiftLeft<16 - kShadingPlaces>(high), hn::ShiftRight<kShadingPlaces>(low)), overflow);
}

template <bool hasPattern, bool hasShading>
void CorrectWith(const RowCorrection& correction, const RowBalance& balance, uint16_t* samples, size_t count) {
    const size_t lanes = hn::Lanes(d16);
    const BalanceVectors vectors(balance);
    const auto whiteLight = hn::Sub(vectors.white, vectors.black);
    const auto weight = hn::Set(dSigned16, correction.lowerWeight);
    size_t column = 0;
    for (; column + lanes <= count; column += lanes) {
        const auto sample = hn::Min(hn::LoadU(d16, samples + column), vectors.largest);
        const auto values = hn::ShiftLeftSame(sample, vectors.leftShift);
        auto light = hn::SaturatedSub(values, vectors.black);
        if constexpr (hasPattern) {
            const auto corrected = hn::SaturatedSub(WithoutPattern(values, correction.pattern + column), vectors.black);
            light = hn::IfThenElse(hn::Gt(vectors.white, values), corrected, light);  // white stays white
        }
        if constexpr (hasShading)
            light = Unshaded(light, correction.upperGains + column, correction.lowerGains + column, weight);
        hn::StoreU(vectors.OfLight(hn::Min(light, whiteLight)), d16, samples + column);
    }
    for (; column < count; ++column) samples[column] = CorrectedSample(correction, balance, samples[column], column);
}

void Row(const RowCorrection& correction, const RowBalance& balance, uint16_t* samples, size_t count) {
    const bool hasShading = correction.upperGains != nullptr;
    if (correction.pattern)
        hasShading ? CorrectWith<true, true>(correction, balance, samples, count)
                   : CorrectWith<true, false>(correction, balance, samples, count);
    else
        hasShading ? CorrectWith<false, true>(correction, balance, samples, count)
                   : CorrectWith<false, false>(correction, balance, samples, count);
}

}  // namespace
}  // namespace kvx::frame::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx::frame {

HWY_EXPORT(Row);

void CorrectRow(const RowCorrection& correction, const RowBalance& balance, uint16_t* samples, size_t count) {
    HWY_DYNAMIC_DISPATCH(Row)(correction, balance, samples, count);
}

}  // namespace kvx::frame
#endif
