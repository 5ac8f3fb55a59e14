#include "frame/finish/BalanceRow.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "frame/finish/BalanceRow.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kvx::frame::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

const hn::ScalableTag<uint16_t> d16;
const hn::Half<decltype(d16)> dHalf16;
const hn::Repartition<uint32_t, decltype(d16)> d32;
const hn::RebindToSigned<decltype(d32)> dSigned32;

/** Rounded, scaled and limited products of half a vector. */
template <class V>
auto Scaled(const RowBalance& balance, V light, V factors) {
    const auto half = hn::Set(d32, (1u << balance.scale) >> 1);
    const auto product = hn::Add(hn::Mul(hn::PromoteTo(d32, light), hn::PromoteTo(d32, factors)), half);
    const auto limited = hn::Min(hn::ShiftRightSame(product, balance.scale), hn::Set(d32, uint32_t{balance.limit}));
    return hn::DemoteTo(dHalf16, hn::BitCast(dSigned32, limited));
}

/** The four values in turn. */
hn::Vec<decltype(d16)> Repeated(const std::array<uint16_t, 4>& values) {
    HWY_ALIGN uint16_t turns[HWY_MAX_BYTES / sizeof(uint16_t)];
    for (size_t i = 0; i < hn::Lanes(d16); ++i) turns[i] = values[i % 4];
    return hn::Load(d16, turns);
}

void Row(const RowBalance& balance, uint16_t* samples, size_t count) {
    const size_t lanes = hn::Lanes(d16);
    const auto white = Repeated(balance.white), black = Repeated(balance.black), factors = Repeated(balance.factors);
    const auto largest = hn::Set(d16, balance.largest);
    size_t column = 0;
    for (; column + lanes <= count; column += lanes) {
        const auto sample = hn::Min(hn::LoadU(d16, samples + column), largest);
        const auto value = hn::Min(hn::ShiftLeftSame(sample, balance.leftShift), white);
        const auto light = hn::SaturatedSub(value, black);
        const auto result =
            hn::Combine(d16, Scaled(balance, hn::UpperHalf(dHalf16, light), hn::UpperHalf(dHalf16, factors)),
                        Scaled(balance, hn::LowerHalf(dHalf16, light), hn::LowerHalf(dHalf16, factors)));
        hn::StoreU(result, d16, samples + column);
    }
    for (; column < count; ++column) samples[column] = BalancedSample(balance, samples[column], column);
}

}  // namespace
}  // namespace kvx::frame::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx::frame {

HWY_EXPORT(Row);

void BalanceRow(const RowBalance& balance, uint16_t* samples, size_t count) {
    HWY_DYNAMIC_DISPATCH(Row)(balance, samples, count);
}

}  // namespace kvx::frame
#endif
