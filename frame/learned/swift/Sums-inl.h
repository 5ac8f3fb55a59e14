/** Sums of products for two vectors of pixels. */
// Included once per instruction set.
#if defined(KVX_SWIFT_SUMS) == defined(HWY_TARGET_TOGGLE)
#ifdef KVX_SWIFT_SUMS
#undef KVX_SWIFT_SUMS
#else
#define KVX_SWIFT_SUMS
#endif

#include <hwy/highway.h>

#include <cstring>
#include <type_traits>

#include "frame/learned/PairProducts-inl.h"
#include "frame/learned/swift/SwiftRows.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::frame::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

// Interleaving and packing within blocks of 16 bytes undo each other. Only x86 packs wider vectors in this way.
using Words = std::conditional_t<HWY_ARCH_X86, hn::ScalableTag<int16_t>, hn::CappedTag<int16_t, 8>>;
using Unsigned = hn::Rebind<uint16_t, Words>;
using Wide = hn::Repartition<int32_t, Words>;
using Bytes = hn::Repartition<uint8_t, Words>;
using V = hn::Vec<Words>;
using W = hn::Vec<Wide>;

/** Saturated words: those of `a` in the lower half of each block, those of `b` in the upper. */
HWY_INLINE V Packed(W a, W b) {
#if HWY_ARCH_X86
    return hn::ReorderDemote2To(Words(), a, b);
#else
    const hn::Half<Words> half;
    return hn::Combine(Words(), hn::DemoteTo(half, b), hn::DemoteTo(half, a));
#endif
}

HWY_INLINE V Repeated(const LaneWords& words) {
    uint64_t bits;
    std::memcpy(&bits, words.data(), sizeof bits);
    return hn::BitCast(Words(), hn::Set(hn::Repartition<uint64_t, Words>(), bits));
}

/** Every second word, from the first on. */
HWY_INLINE W EvenWords(V words) {
    const V ones = hn::OddEven(hn::Zero(Words()), hn::Set(Words(), 1));
    W odd = hn::Zero(Wide());
    const W even = hn::ReorderWidenMulAccumulate(Wide(), words, ones, hn::Zero(Wide()), odd);
    return hn::RearrangeToOddPlusEven(even, odd);
}

/** Division by 2^shift, of sums. */
struct Rounding {
    explicit Rounding(int bits) : half(hn::Set(Wide(), 1 << (bits - 1))), shift(bits) {}
    W half;
    int shift;
};

/** Sums for two vectors of pixels with two filters for each of a number of colours. */
template <size_t kColours>
class Sums {
public:
    Sums() {
        for (size_t i = 0; i < kFilters; ++i)
            for (size_t vector = 0; vector < 2; ++vector) m_even[i][vector] = m_odd[i][vector] = hn::Zero(Wide());
    }

    /** Adds the products of a pair of samples for each pixel. @param pair its place in PackedPairs */
    HWY_INLINE void Add(V first, V second, const LaneWords* pair, bool isAlongRows = true, bool isAlongColumns = true) {
#pragma GCC unroll 6
        for (size_t i = 0; i < kFilters; ++i) {
            if (!(i < kColours ? isAlongRows : isAlongColumns)) continue;
            const V weights = Repeated(pair[i]);
            m_even[i][0] = PlusProducts(first, weights, m_even[i][0], m_odd[i][0]);
            m_even[i][1] = PlusProducts(second, weights, m_even[i][1], m_odd[i][1]);
        }
    }

    /** Takes these sums as those of the samples' upper parts, and adds those of the lower parts. */
    HWY_INLINE void AddLower(const Sums& lower) {
        for (size_t i = 0; i < kFilters; ++i)
            for (size_t vector = 0; vector < 2; ++vector) {
                m_even[i][vector] = hn::Add(hn::ShiftLeft<kLowerBits>(m_even[i][vector]), lower.m_even[i][vector]);
                m_odd[i][vector] = hn::Add(hn::ShiftLeft<kLowerBits>(m_odd[i][vector]), lower.m_odd[i][vector]);
            }
    }

    /** Words of a colour, packed. */
    HWY_INLINE V Mixed(size_t colour, const W (&mix)[2], const Rounding& rounding) const {
        // mix * rows + (4 - mix) * columns: where terms overflow, their sum does not.
        const auto word = [&](size_t vector) {
            const W columns = Of(kColours + colour, vector);
            const W more = hn::Mul(mix[vector], hn::Sub(Of(colour, vector), columns));
            const W sum = hn::Add(hn::Add(hn::ShiftLeft<2>(columns), rounding.half), more);
            return hn::ShiftRightSame(sum, rounding.shift);
        };
        return Packed(word(0), word(1));
    }

private:
    HWY_INLINE W Of(size_t filter, size_t vector) const {
        return hn::RearrangeToOddPlusEven(m_even[filter][vector], m_odd[filter][vector]);
    }

    static constexpr size_t kFilters = 2 * kColours;  // along rows, then along columns

    W m_even[kFilters][2], m_odd[kFilters][2];  // x86 adds pairs at once and leaves the odd ones 0
};

}  // namespace
}  // namespace kvx::frame::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
