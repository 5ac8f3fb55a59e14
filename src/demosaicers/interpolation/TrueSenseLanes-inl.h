// What the kernels of the TrueSense interpolation share, once per instruction set: int16_t lanes hold every result
// while the raw samples lie within 0 to 4095; int32_t lanes hold 16-bit values and wrap what they store to them.
#if defined(KVX_TRUESENSE_LANES_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef KVX_TRUESENSE_LANES_INL_H
#undef KVX_TRUESENSE_LANES_INL_H
#else
#define KVX_TRUESENSE_LANES_INL_H
#endif

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kvx::HWY_NAMESPACE {
namespace {
namespace hn = hwy::HWY_NAMESPACE;

template <class D, class V = hn::Vec<D>>
V Wrapped(D, V v) {
    if constexpr (sizeof(hn::TFromD<D>) == 4)
        return hn::ShiftRight<16>(hn::ShiftLeft<16>(v));
    else
        return v;
}

/** The difference that remains once pan - difference has been stored as a colour. */
template <class D, class V = hn::Vec<D>>
V StoredDifference(D d, V pan, V difference) {
    if constexpr (sizeof(hn::TFromD<D>) == 4)
        return hn::Sub(pan, Wrapped(d, hn::Sub(pan, difference)));
    else
        return difference;
}

template <class V>
V MeanOfFour(V a, V b, V c, V e) {
    return hn::ShiftRight<2>(hn::Add(hn::Add(a, b), hn::Add(c, e)));
}

/** Vectors of the four neighbours of the sites from j on. */
template <class D, class Lane>
struct Four {
    hn::Vec<D> left, right, up, down;
    Four(D d, const Neighbours<Lane>& of, size_t j)
        : left(hn::LoadU(d, of.left + j)),
          right(hn::LoadU(d, of.right + j)),
          up(hn::LoadU(d, of.up + j)),
          down(hn::LoadU(d, of.down + j)) {}

    /** Where the values change less along the row than across it: a tie goes to the vertical pair. */
    auto IsHorizontal() const {
        return hn::Lt(hn::Abs(hn::Sub(right, left)), hn::Abs(hn::Sub(down, up)));
    }
    template <class Mask>
    auto MeanOfPair(Mask isHorizontal) const {
        return hn::ShiftRight<1>(hn::IfThenElse(isHorizontal, hn::Add(left, right), hn::Add(up, down)));
    }
    auto Mean() const {
        return MeanOfFour(left, right, up, down);
    }
};

/** Two halves of a row, back in the order of the columns. */
template <class V>
void StoreColumns(hn::ScalableTag<int16_t> d, V even, V odd, int16_t* columns) {
    hn::StoreInterleaved2(even, odd, d, columns);
}
template <class V>
void StoreColumns(hn::ScalableTag<int32_t> d, V even, V odd, int16_t* columns) {
    const auto pairs = hn::Or(hn::And(even, hn::Set(d, 0xFFFF)), hn::ShiftLeft<16>(odd));
    const hn::Repartition<int16_t, decltype(d)> columnsOf;
    hn::StoreU(hn::BitCast(columnsOf, pairs), columnsOf, columns);
}

}  // namespace
}  // namespace kvx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif
