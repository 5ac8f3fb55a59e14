/** Sums of products for two vectors of pixels, and pixels from words. */
// Included once per instruction set.
#if defined(KVX_SWIFT_PIXELS) == defined(HWY_TARGET_TOGGLE)
#ifdef KVX_SWIFT_PIXELS
#undef KVX_SWIFT_PIXELS
#else
#define KVX_SWIFT_PIXELS
#endif

#include <hwy/highway.h>

#include <algorithm>
#include <cstring>
#include <type_traits>

#include "frame/learned/swift/SwiftRows.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::frame::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

// Interleaving and packing within blocks of 16 bytes undo each other. Only x86 packs wider vectors in this way.
using Words = std::conditional_t<HWY_ARCH_X86, hn::ScalableTag<int16_t>, hn::CappedTag<int16_t, 8>>;
using Unsigned = hn::Rebind<uint16_t, Words>;
using Wide = hn::Repartition<int32_t, Words>;
using V = hn::Vec<Words>;
using W = hn::Vec<Wide>;

/** Saturated words: those of `a` in the lower half of each block, those of `b` in the upper. */
HWY_INLINE V Packed(W a, W b) {
#if HWY_ARCH_X86
    return hn::ReorderDemote2To(Words(), a, b);
#else
    return hn::OrderedDemote2To(Words(), a, b);
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

/** The same sum, computed here: GCC puts off adding products until it runs out of registers, and stores them. */
HWY_INLINE W InRegister(W sum) {
#if HWY_ARCH_X86 && HWY_TARGET != HWY_EMU128
    asm("" : "+v"(sum.raw));
#endif
    return sum;
}

/** Sums for two vectors of pixels with two filters for each of a number of colours, in the order of PackedRow. */
template <size_t kColours>
class Sums {
public:
    Sums() {
        for (auto& filter : m_even)
            for (W& sum : filter) sum = hn::Zero(Wide());
        for (auto& filter : m_odd)
            for (W& sum : filter) sum = hn::Zero(Wide());
    }

    /** Adds the products of a pair of samples for each pixel. @param filters of this pair */
    HWY_INLINE void Add(V first, V second, const LaneWords* filters) {
#pragma GCC unroll 6
        for (size_t i = 0; i < 2 * kColours; ++i) {
            const V weights = Repeated(filters[i]);
            const auto add = [&](V pair, W& even, W& odd) {
                even = InRegister(hn::ReorderWidenMulAccumulate(Wide(), pair, weights, even, odd));
            };
            add(first, m_even[i][0], m_odd[i][0]);
            add(second, m_even[i][1], m_odd[i][1]);
        }
    }

    /** Takes these sums as those of the samples' upper parts, and adds those of the lower parts. */
    HWY_INLINE void AddLower(const Sums& lower) {
        for (size_t i = 0; i < 2 * kColours; ++i)
            for (size_t vector = 0; vector < 2; ++vector) {
                m_even[i][vector] = hn::Add(hn::ShiftLeft<kLowerBits>(Of(i, vector)), lower.Of(i, vector));
                m_odd[i][vector] = hn::Zero(Wide());
            }
    }

    /** Words of a colour, packed. */
    HWY_INLINE V Mixed(size_t colour, const W (&mix)[2], int shift) const {
        const W half = hn::Set(Wide(), 1 << (shift - 1));
        const auto word = [&](size_t vector) {
            const W more = hn::Mul(mix[vector], Of(2 * colour + 1, vector));
            return hn::ShiftRightSame(hn::Add(hn::Add(Of(2 * colour, vector), half), more), shift);
        };
        return Packed(word(0), word(1));
    }

private:
    HWY_INLINE W Of(size_t filter, size_t vector) const {
        return hn::RearrangeToOddPlusEven(m_even[filter][vector], m_odd[filter][vector]);
    }

    W m_even[2 * kColours][2], m_odd[2 * kColours][2];  // x86 adds pairs at once and leaves the odd ones 0
};

/** Stores vectors of pixels of samples T: bytes or words. */
template <class T>
class PixelWriter {
public:
    PixelWriter(const PixelInput& input, const PixelRow& out)
        : m_out(out),
          m_own(Repeated(input.filters.own)),
          m_green(Repeated(input.filters.green)),
          m_half(hn::Set(Words(), static_cast<int16_t>(1 << (16 - out.sampleBits) >> 1))),
          m_up(input.up) {}

    /** @param samples of the mosaic, which stay as they are */
    HWY_INLINE void Put(size_t column, V own, V green, V other, V samples) const {
        const V known = hn::ShiftLeftSame(samples, m_up);
        const V ownSamples = Rounded(hn::IfVecThenElse(m_own, known, own));
        const V greenSamples = Rounded(hn::IfVecThenElse(m_green, known, green));
        const V otherSamples = Rounded(other);
        if (m_out.isOwnFirst)
            PutSamples(column, ownSamples, greenSamples, otherSamples);
        else
            PutSamples(column, otherSamples, greenSamples, ownSamples);
    }

private:
    HWY_INLINE V Rounded(V word) const {
        return hn::SaturatedAdd(word, m_half);
    }

    HWY_INLINE void PutSamples(size_t column, V first, V second, V third) const {
        constexpr size_t kPixel = 3 * sizeof(T);
        const hn::Rebind<T, Words> d;
        const size_t lanes = hn::Lanes(d);
        uint8_t* const to = m_out.data + column * kPixel;
        T pixels[3 * hn::MaxLanes(d)];  // also where vectors are stored word by word, which needs even addresses
        const bool isDirect = column + lanes <= m_out.count && (sizeof(T) == 1 || HWY_TARGET != HWY_EMU128);
        hn::StoreInterleaved3(Narrowed(first), Narrowed(second), Narrowed(third), d,
                              isDirect ? reinterpret_cast<T*>(to) : pixels);
        if (!isDirect && column < m_out.count) std::memcpy(to, pixels, std::min(lanes, m_out.count - column) * kPixel);
    }

    HWY_INLINE auto Narrowed(V signedWord) const {
        const auto word = hn::Xor(hn::BitCast(Unsigned(), signedWord), hn::Set(Unsigned(), uint16_t{0x8000}));
        if constexpr (sizeof(T) == 1)
            return hn::TruncateTo(hn::Rebind<uint8_t, Words>(), hn::ShiftRight<8>(word));
        else
            return hn::ShiftRightSame(word, 16 - m_out.bits);
    }

    PixelRow m_out;
    V m_own, m_green, m_half;
    int m_up;
};

}  // namespace
}  // namespace kvx::frame::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
