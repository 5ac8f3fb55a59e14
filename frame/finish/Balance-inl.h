/** Gains of vectors of light. */
// Included once per instruction set.
#if defined(KVX_BALANCE_VECTORS) == defined(HWY_TARGET_TOGGLE)
#ifdef KVX_BALANCE_VECTORS
#undef KVX_BALANCE_VECTORS
#else
#define KVX_BALANCE_VECTORS
#endif

#include <hwy/highway.h>

#include <array>

#include "frame/finish/BalanceRow.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::frame::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

/** The parameters of a row as vectors, and BalancedLight() of a vector. */
class BalanceVectors {
    using D = hn::ScalableTag<uint16_t>;
    using V = hn::Vec<D>;

public:
    explicit BalanceVectors(const RowBalance& balance)
        : largest(hn::Set(D(), balance.largest)),
          white(Repeated(balance.white)),
          black(Repeated(balance.black)),
          leftShift(balance.leftShift),
          m_factors(Repeated(balance.factors)),
          m_limit(hn::Set(D(), balance.limit)),
          m_scale(balance.scale) {}

    /** Rounded, scaled and limited products: products of 32 bits in two vectors of their halves. */
    V OfLight(V light) const {
        const D d;
        const V high = hn::MulHigh(light, m_factors), low = hn::Mul(light, m_factors);
        if (m_scale == 17) return hn::Min(hn::AverageRound(high, hn::Zero(d)), m_limit);
        const V half = hn::Set(d, static_cast<uint16_t>((1u << m_scale) >> 1)), sum = hn::Add(low, half);
        const V rest = hn::Sub(high, hn::VecFromMask(d, hn::Lt(sum, low)));  // with the carry
        if (m_scale == 16) return hn::Min(rest, m_limit);
        if (m_scale == 0) return hn::Min(hn::Or(sum, hn::VecFromMask(d, hn::Gt(rest, hn::Zero(d)))), m_limit);
        const V overflow = hn::VecFromMask(d, hn::Gt(hn::ShiftRightSame(rest, m_scale), hn::Zero(d)));
        const V shifted = hn::Or(hn::ShiftLeftSame(rest, 16 - m_scale), hn::ShiftRightSame(sum, m_scale));
        return hn::Min(hn::Or(shifted, overflow), m_limit);
    }

    V largest, white, black;
    int leftShift;

private:
    static V Repeated(const std::array<uint16_t, 4>& values) {
        HWY_ALIGN uint16_t turns[HWY_MAX_BYTES / sizeof(uint16_t)];
        for (size_t i = 0; i < hn::Lanes(D()); ++i) turns[i] = values[i % 4];
        return hn::Load(D(), turns);
    }

    V m_factors, m_limit;
    int m_scale;
};

}  // namespace
}  // namespace kvx::frame::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
