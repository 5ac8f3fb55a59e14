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
using Bytes = hn::Repartition<uint8_t, Words>;
using V = hn::Vec<Words>;
using W = hn::Vec<Wide>;

constexpr bool kHasBlocks = HWY_ARCH_X86 && HWY_TARGET != HWY_EMU128;

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

/**
 * Adds products of pairs; x86 adds them to `even` only. The statements give the sums their place in the order of
 * instructions: GCC puts off adding until it runs out of registers for the products, and stores them.
 */
HWY_INLINE void AddProducts(V pairs, V weights, W& even, W& odd) {
#if HWY_TARGET == HWY_AVX3_DL
    asm("vpdpwssd %2, %1, %0" : "+v"(even.raw) : "v"(pairs.raw), "v"(weights.raw));  // multiplies and adds at once
    (void)odd;
#else
    even = hn::ReorderWidenMulAccumulate(Wide(), pairs, weights, even, odd);
#if HWY_ARCH_X86 && HWY_TARGET != HWY_EMU128
    asm("" : "+v"(even.raw));
#endif
#endif
}

/** Division by 2^shift, of sums. */
struct Rounding {
    explicit Rounding(int bits) : half(hn::Set(Wide(), 1 << (bits - 1))), shift(bits) {}
    W half;
    int shift;
};

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
            AddProducts(first, weights, m_even[i][0], m_odd[i][0]);
            AddProducts(second, weights, m_even[i][1], m_odd[i][1]);
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
    HWY_INLINE V Mixed(size_t colour, const W (&mix)[2], const Rounding& rounding) const {
        const auto word = [&](size_t vector) {
            const W more = hn::Mul(mix[vector], Of(2 * colour + 1, vector));
            const W sum = hn::Add(hn::Add(Of(2 * colour, vector), rounding.half), more);
            return hn::ShiftRightSame(sum, rounding.shift);
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
        const size_t lanes = hn::Lanes(Words());
        uint8_t* const to = m_out.data + column * kPixel;
        T pixels[3 * hn::MaxLanes(Words()) + kTooMany];
        const bool isDirect = column + lanes + kTooMany <= m_out.count && kAnyAddress;
        Store(first, second, third, isDirect ? reinterpret_cast<T*>(to) : pixels);
        if (!isDirect && column < m_out.count) std::memcpy(to, pixels, std::min(lanes, m_out.count - column) * kPixel);
    }

    // The last block of bytes that x86 stores ends after the last pixel.
    static constexpr size_t kTooMany = kHasBlocks && sizeof(T) == 1 ? 4 : 0;
    // Without vectors they are stored word by word, which needs even addresses.
    static constexpr bool kAnyAddress = sizeof(T) == 1 || HWY_TARGET != HWY_EMU128;

    HWY_INLINE void Store(V first, V second, V third, T* to) const {
        if constexpr (kHasBlocks && sizeof(T) == 1)
            StoreBytes(first, second, third, to);
        else
            hn::StoreInterleaved3(Narrowed(first), Narrowed(second), Narrowed(third), hn::Rebind<T, Words>(), to);
    }

    /** The upper bytes of signed words: four pixels of a block are four bytes each, of which three are stored. */
    static HWY_INLINE void StoreBytes(V first, V second, V third, uint8_t* to) {
        const Unsigned d;
        const Bytes dByte;
        const auto upper = [&](V words) { return hn::BitCast(d, words); };
        const auto two = hn::Or(hn::ShiftRight<8>(upper(first)), hn::And(upper(second), hn::Set(d, 0xFF00)));
        const auto firstTwo = hn::Xor(two, hn::Set(d, 0x8080));
        const auto last = hn::Xor(hn::ShiftRight<8>(upper(third)), hn::Set(d, 0x80));
        alignas(16) static constexpr uint8_t kOrder[16] = {0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 3, 7, 11, 15};
        const auto order = hn::LoadDup128(dByte, kOrder);
        const auto pixels = [&](auto four) { return hn::TableLookupBytes(hn::BitCast(dByte, four), order); };
        StoreBlocks(dByte, pixels(hn::InterleaveLower(d, firstTwo, last)),
                    pixels(hn::InterleaveUpper(d, firstTwo, last)), to);
    }

    /** Blocks of either vector in turn, from left to right: each begins where the pixels of the one before end. */
    template <class D>
    static HWY_INLINE void StoreBlocks(D d, hn::Vec<D> lower, hn::Vec<D> upper, uint8_t* to) {
        if constexpr (hn::MaxLanes(D()) == 16) {
            hn::StoreU(lower, d, to);
            hn::StoreU(upper, d, to + 12);
        } else {
            const hn::Half<D> half;
            StoreBlocks(half, hn::LowerHalf(half, lower), hn::LowerHalf(half, upper), to);
            StoreBlocks(half, hn::UpperHalf(half, lower), hn::UpperHalf(half, upper), to + 3 * hn::Lanes(half) / 2);
        }
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
