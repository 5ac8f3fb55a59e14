#include "frame/finish/BalanceRow.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "frame/finish/BalanceRow.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "frame/finish/Balance-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::frame::HWY_NAMESPACE {
namespace {

void Row(const RowBalance& balance, const uint16_t* from, uint16_t* to, size_t count) {
    const hn::ScalableTag<uint16_t> d;
    const size_t lanes = hn::Lanes(d);
    const BalanceVectors vectors(balance);
    size_t column = 0;
    for (; column + lanes <= count; column += lanes) {
        const auto sample = hn::Min(hn::LoadU(d, from + column), vectors.largest);
        const auto value = hn::Min(hn::ShiftLeftSame(sample, vectors.leftShift), vectors.white);
        hn::StoreU(vectors.OfLight(hn::SaturatedSub(value, vectors.black)), d, to + column);
    }
    for (; column < count; ++column) to[column] = BalancedSample(balance, from[column], column);
}

}  // namespace
}  // namespace kvx::frame::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx::frame {

HWY_EXPORT(Row);

void BalanceRow(const RowBalance& balance, const uint16_t* from, uint16_t* to, size_t count) {
    HWY_DYNAMIC_DISPATCH(Row)(balance, from, to, count);
}

}  // namespace kvx::frame
#endif
