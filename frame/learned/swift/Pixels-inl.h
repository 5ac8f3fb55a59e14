/** Pixels from words. */
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

#include "frame/learned/swift/Sums-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::frame::HWY_NAMESPACE {
namespace {

constexpr bool kHasBlocks = HWY_ARCH_X86 && HWY_TARGET != HWY_EMU128;

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

    // The last block of bytes that x86 stores ends behind the last pixel.
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
