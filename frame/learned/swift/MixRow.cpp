#include "frame/learned/swift/SwiftRows.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "frame/learned/swift/MixRow.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kvx::frame::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;
using Signed = hn::ScalableTag<int16_t>;
using Unsigned = hn::ScalableTag<uint16_t>;
using V = hn::Vec<Signed>;
using U = hn::Vec<Unsigned>;

HWY_INLINE V First(V before, V after) {
    return hn::Abs(hn::Sub(after, before));
}
HWY_INLINE V Second(V before, V twice, V after) {
    return hn::Abs(hn::Sub(hn::Sub(twice, before), after));
}
/** Gradients that `joined` makes of a first and a second difference. Only sums of nine can exceed 16 bits. */
template <class Joined>
HWY_INLINE void ForGradients(const int16_t* const levels[5], size_t count, const GradientRow rows[3],
                             const GradientRow& sums, const Joined& joined) {
    const Signed d;
    const Unsigned dSum;
    const int16_t *const up2 = levels[0], *const up = levels[1], *const row = levels[2], *const down = levels[3],
                         *const down2 = levels[4];
    const GradientRow above2 = rows[0], above = rows[1], out = rows[2], sum = sums;
    for (size_t column = 0; column < count; column += hn::Lanes(d)) {
        const auto at = [&](const int16_t* from) { return hn::LoadU(d, from + column); };
        const auto put = [&](V gradient, uint16_t* GradientRow::*along) {
            const U value = hn::BitCast(dSum, gradient);
            hn::StoreU(value, dSum, out.*along + column);
            const U two = hn::Add(hn::LoadU(dSum, above2.*along + column), hn::LoadU(dSum, above.*along + column));
            hn::StoreU(hn::Add(two, value), dSum, sum.*along + column);
        };
        const V middle = at(row), twice = hn::Add(middle, middle);
        put(joined(First(at(row - 1), at(row + 1)), Second(at(row - 2), twice, at(row + 2))), &GradientRow::alongRows);
        put(joined(First(at(up), at(down)), Second(at(up2), twice, at(down2))), &GradientRow::alongColumns);
    }
}

void BayerRow(const int16_t* const levels[5], size_t count, const GradientRow rows[3], const GradientRow& sums) {
    ForGradients(levels, count, rows, sums, [](V first, V second) { return hn::Add(first, second); });
}

void TrueSenseRow(const int16_t* const levels[5], size_t firstPan, size_t count, const GradientRow rows[3],
                  const GradientRow& sums) {
    if (firstPan == 0)
        ForGradients(levels, count, rows, sums,
                     [](V first, V second) { return hn::OddEven(first, hn::ShiftRight<1>(second)); });
    else
        ForGradients(levels, count, rows, sums,
                     [](V first, V second) { return hn::OddEven(hn::ShiftRight<1>(second), first); });
}

/** 1 where a < b, else 0. */
HWY_INLINE U IsLess(U a, U b) {
    return hn::Min(hn::SaturatedSub(b, a), hn::Set(Unsigned(), uint16_t{1}));
}

HWY_INLINE U Mix(U h, U v) {
    const U h4 = hn::ShiftRight<2>(h), v4 = hn::ShiftRight<2>(v);
    const U rows = hn::Add(IsLess(h, hn::Sub(v, v4)), IsLess(h, hn::Add(v4, hn::ShiftRight<3>(v))));
    const U columns = hn::Add(IsLess(v, hn::Sub(h, h4)), IsLess(v, hn::Add(h4, hn::ShiftRight<3>(h))));
    return hn::Add(hn::Set(Unsigned(), uint16_t{2}), hn::Sub(rows, columns));
}

void Mixes(const GradientRow& sums, size_t count, uint16_t* mix) {
    const Unsigned d;
    const uint16_t *const alongRows = sums.alongRows, *const alongColumns = sums.alongColumns;
    for (size_t column = 0; column < count; column += hn::Lanes(d)) {
        const auto sum = [&](const uint16_t* row) {
            const auto at = [&](const uint16_t* from) { return hn::LoadU(d, from + column); };
            return hn::SaturatedAdd(hn::SaturatedAdd(at(row - 1), at(row)), at(row + 1));
        };
        hn::StoreU(Mix(sum(alongRows), sum(alongColumns)), d, mix + column);
    }
}

}  // namespace
}  // namespace kvx::frame::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx::frame {

HWY_EXPORT(BayerRow);
HWY_EXPORT(TrueSenseRow);
HWY_EXPORT(Mixes);

void BayerGradients(const int16_t* const levels[5], size_t count, const GradientRow rows[3], const GradientRow& sums) {
    HWY_DYNAMIC_DISPATCH(BayerRow)(levels, count, rows, sums);
}

void TrueSenseGradients(const int16_t* const levels[5], size_t firstPan, size_t count, const GradientRow rows[3],
                        const GradientRow& sums) {
    HWY_DYNAMIC_DISPATCH(TrueSenseRow)(levels, firstPan, count, rows, sums);
}

void MixRow(const GradientRow& sums, size_t count, uint16_t* mix) {
    HWY_DYNAMIC_DISPATCH(Mixes)(sums, count, mix);
}

}  // namespace kvx::frame
#endif
