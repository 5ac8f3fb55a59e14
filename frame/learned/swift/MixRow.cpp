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
HWY_INLINE void Put(V value, uint16_t* to) {
    hn::StoreU(hn::BitCast(Unsigned(), value), Unsigned(), to);
}

/** Gradients that `joined` makes of a first and a second difference. */
template <class Joined>
HWY_INLINE void ForGradients(const int16_t* const levels[5], size_t count, const GradientRow& out,
                             const Joined& joined) {
    const Signed d;
    for (size_t column = 0; column < count; column += hn::Lanes(d)) {
        const auto at = [&](int row, int distance) {
            return hn::LoadU(d, levels[2 + row] + static_cast<ptrdiff_t>(column) + distance);
        };
        const V middle = at(0, 0), twice = hn::Add(middle, middle);
        Put(joined(First(at(0, -1), at(0, 1)), Second(at(0, -2), twice, at(0, 2))), out.alongRows + column);
        Put(joined(First(at(-1, 0), at(1, 0)), Second(at(-2, 0), twice, at(2, 0))), out.alongColumns + column);
    }
}

void BayerRow(const int16_t* const levels[5], size_t count, const GradientRow& out) {
    ForGradients(levels, count, out, [](V first, V second) { return hn::Add(first, second); });
}

void TrueSenseRow(const int16_t* const levels[5], size_t firstPan, size_t count, const GradientRow& out) {
    if (firstPan == 0)
        ForGradients(levels, count, out,
                     [](V first, V second) { return hn::OddEven(first, hn::ShiftRight<1>(second)); });
    else
        ForGradients(levels, count, out,
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

/** Sums over 3x3 samples first add columns; only the last sums can exceed 16 bits. */
void Mixes(const GradientRow gradients[3], const GradientRow& sums, size_t count, uint16_t* mix) {
    const Unsigned d;
    const auto lanes = static_cast<ptrdiff_t>(hn::Lanes(d));
    const auto end = static_cast<ptrdiff_t>(count);
    for (ptrdiff_t column = -1; column <= end; column += lanes) {
        const auto sum = [&](uint16_t* GradientRow::*along) {
            const auto at = [&](size_t row) { return hn::LoadU(d, gradients[row].*along + column); };
            hn::StoreU(hn::Add(hn::Add(at(0), at(1)), at(2)), d, sums.*along + column);
        };
        sum(&GradientRow::alongRows);
        sum(&GradientRow::alongColumns);
    }
    for (ptrdiff_t column = 0; column < end; column += lanes) {
        const auto sum = [&](const uint16_t* from) {
            const auto at = [&](int distance) { return hn::LoadU(d, from + column + distance); };
            return hn::SaturatedAdd(hn::SaturatedAdd(at(-1), at(0)), at(1));
        };
        hn::StoreU(Mix(sum(sums.alongRows), sum(sums.alongColumns)), d, mix + column);
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

void BayerGradients(const int16_t* const levels[5], size_t count, const GradientRow& out) {
    HWY_DYNAMIC_DISPATCH(BayerRow)(levels, count, out);
}

void TrueSenseGradients(const int16_t* const levels[5], size_t firstPan, size_t count, const GradientRow& out) {
    HWY_DYNAMIC_DISPATCH(TrueSenseRow)(levels, firstPan, count, out);
}

void MixRow(const GradientRow gradients[3], const GradientRow& sums, size_t count, uint16_t* mix) {
    HWY_DYNAMIC_DISPATCH(Mixes)(gradients, sums, count, mix);
}

}  // namespace kvx::frame
#endif
