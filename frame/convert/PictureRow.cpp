#include "frame/convert/PictureRow.h"

#include <algorithm>
#include <cstring>
#include <utility>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "frame/convert/PictureRow.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kvx::frame::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

const hn::ScalableTag<uint16_t> d16;
const hn::Repartition<int32_t, decltype(d16)> d32;
const hn::Repartition<float, decltype(d16)> dFloat;
using FloatVec = hn::Vec<decltype(dFloat)>;

/** Pixels per chunk: the three planes stay in the first-level cache. A multiple of the lanes of any vector. */
constexpr size_t kChunk = 512;

/** Even and odd words as numbers. */
struct Halves {
    FloatVec even, odd;
};

HWY_INLINE Halves HalvesOf(const uint16_t* words) {
    const hn::Repartition<uint32_t, decltype(d16)> pairs;
    const auto v = hn::BitCast(pairs, hn::LoadU(d16, words));
    const auto number = [](auto half) { return hn::ConvertTo(dFloat, hn::BitCast(d32, half)); };
    return {number(hn::And(v, hn::Set(pairs, 0xFFFF))), number(hn::ShiftRight<16>(v))};
}

/** As MatrixValue(), in the low words. Products and sums are rounded one by one. */
HWY_INLINE hn::Vec<decltype(d32)> MatrixValues(const float* row, FloatVec red, FloatVec green, FloatVec blue) {
    const auto sum = hn::Add(hn::Add(hn::Mul(hn::Set(dFloat, row[0]), red), hn::Mul(hn::Set(dFloat, row[1]), green)),
                             hn::Mul(hn::Set(dFloat, row[2]), blue));
    const auto limited = hn::Min(hn::Max(sum, hn::Zero(dFloat)), hn::Set(dFloat, 65535.0F));
    const auto whole = hn::Floor(hn::Add(limited, hn::Set(dFloat, 0.5F)));
    constexpr float kToInteger = 1 << 23;  // the low bits of the sum are the number: cheaper than a conversion
    return hn::BitCast(d32, hn::Add(whole, hn::Set(dFloat, kToInteger)));
}

void ApplyMatrix(const PixelMatrix& matrix, const PixelPlanes& in, size_t count, uint16_t* const out[3]) {
    for (size_t i = 0; i < count; i += hn::Lanes(d16)) {
        const Halves red = HalvesOf(in[0] + i), green = HalvesOf(in[1] + i), blue = HalvesOf(in[2] + i);
        for (size_t channel = 0; channel < 3; ++channel) {
            const float* const row = matrix.data() + 3 * channel;
            const auto even = MatrixValues(row, red.even, green.even, blue.even);
            const auto odd = hn::ShiftLeft<16>(MatrixValues(row, red.odd, green.odd, blue.odd));
            hn::Store(hn::OddEven(hn::BitCast(d16, odd), hn::BitCast(d16, even)), d16, out[channel] + i);
        }
    }
}

#if HWY_ARCH_X86 && HWY_TARGET != HWY_EMU128

#if HWY_TARGET == HWY_AVX3_DL  // permutes bytes of two vectors

/** Bytes of a vector of pixels, from words of the first two channels and of the last two. */
template <size_t kChannels, class V>
HWY_INLINE void StorePixels(V firstTwo, V lastTwo, uint8_t* out) {
    static constexpr auto kOrder = [] {
        std::array<uint8_t, 128> order{};
        for (size_t i = 0; i < 32 * kChannels; ++i) {
            const size_t pixel = i / kChannels, channel = i % kChannels;
            order[i] = static_cast<uint8_t>(2 * pixel + channel % 2 + (channel < 2 ? 0 : 64));
        }
        return order;
    }();
    const auto bytes = [&](size_t first) {
        return _mm512_permutex2var_epi8(firstTwo.raw, _mm512_loadu_si512(kOrder.data() + first), lastTwo.raw);
    };
    _mm512_storeu_si512(out, bytes(0));
    if constexpr (kChannels == 4)
        _mm512_storeu_si512(out + 64, bytes(64));
    else
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + 64), _mm512_castsi512_si256(bytes(64)));
}

#else

/** Blocks of either vector in turn, from left to right: each begins where the pixels of the one before end. */
template <class D>
HWY_INLINE void StoreBlocks(D d, hn::Vec<D> lower, hn::Vec<D> upper, size_t blockBytes, uint8_t* out) {
    if constexpr (hn::MaxLanes(D()) == 16) {
        hn::StoreU(lower, d, out);
        hn::StoreU(upper, d, out + blockBytes);
    } else {
        const hn::Half<D> half;
        StoreBlocks(half, hn::LowerHalf(half, lower), hn::LowerHalf(half, upper), blockBytes, out);
        StoreBlocks(half, hn::UpperHalf(half, lower), hn::UpperHalf(half, upper), blockBytes,
                    out + hn::Lanes(half) / 8 * blockBytes);
    }
}

/** Bytes of a vector of pixels, from words of the first two channels and of the last two. */
template <size_t kChannels, class V>
HWY_INLINE void StorePixels(V firstTwo, V lastTwo, uint8_t* out) {
    const hn::Repartition<uint8_t, decltype(d16)> dByte;
    alignas(16) static constexpr uint8_t kOrder[16] = {0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 3, 7, 11, 15};
    const auto pixels = [&](auto four) {
        const auto bytes = hn::BitCast(dByte, four);
        return kChannels == 4 ? bytes : hn::TableLookupBytes(bytes, hn::LoadDup128(dByte, kOrder));
    };
    StoreBlocks(dByte, pixels(hn::InterleaveLower(d16, firstTwo, lastTwo)),
                pixels(hn::InterleaveUpper(d16, firstTwo, lastTwo)), 4 * kChannels, out);
}

#endif

/** A vector of pixels of bytes. Blocks of three-byte pixels may write four bytes more than there are. */
template <size_t kChannels>
HWY_INLINE void StoreByteVector(const PixelPlanes& planes, uint8_t* out) {
    const auto load = [&](size_t channel) { return hn::Min(hn::LoadU(d16, planes[channel]), hn::Set(d16, 255)); };
    StorePixels<kChannels>(hn::Or(load(0), hn::ShiftLeft<8>(load(1))), hn::Or(load(2), hn::Set(d16, 0xFF00)), out);
}

template <size_t kChannels>
void StoreBytes(const PixelPlanes& planes, size_t count, uint8_t* out) {
    constexpr size_t kTooMany = 4;  // bytes that the last block may write, as pixels
    for (size_t i = 0; i < count; i += hn::Lanes(d16)) {
        const PixelPlanes at = {planes[0] + i, planes[1] + i, planes[2] + i};
        if (i + hn::Lanes(d16) + kTooMany <= count) {
            StoreByteVector<kChannels>(at, out + kChannels * i);
        } else {
            uint8_t pixels[kChannels * hn::MaxLanes(d16) + kTooMany];
            StoreByteVector<kChannels>(at, pixels);
            std::memcpy(out + kChannels * i, pixels, kChannels * std::min(hn::Lanes(d16), count - i));
        }
    }
}

#else

template <size_t kChannels>
void StoreBytes(const PixelPlanes& planes, size_t count, uint8_t* out) {
    for (size_t i = 0; i < count; ++i)
        for (size_t channel = 0; channel < kChannels; ++channel)
            out[kChannels * i + channel] =
                channel == 3 ? 255 : static_cast<uint8_t>(std::min<uint16_t>(planes[channel][i], 255));
}

#endif

template <size_t kChannels>
void StoreWords(const PixelPlanes& planes, size_t count, uint16_t white, uint8_t* out) {
    const bool isAligned = reinterpret_cast<uintptr_t>(out) % sizeof(uint16_t) == 0;  // else one by one
    size_t i = 0;
    for (; isAligned && i + hn::Lanes(d16) <= count; i += hn::Lanes(d16)) {
        const auto load = [&](size_t channel) { return hn::LoadU(d16, planes[channel] + i); };
        auto* const to = reinterpret_cast<uint16_t*>(out) + kChannels * i;
        if constexpr (kChannels == 4)
            hn::StoreInterleaved4(load(0), load(1), load(2), hn::Set(d16, white), d16, to);
        else
            hn::StoreInterleaved3(load(0), load(1), load(2), d16, to);
    }
    for (; i < count; ++i)
        for (size_t channel = 0; channel < kChannels; ++channel) {
            const uint16_t sample = channel == 3 ? white : planes[channel][i];
            std::memcpy(out + sizeof sample * (kChannels * i + channel), &sample, sizeof sample);
        }
}

void Shift(const PixelPlanes& in, int shift, size_t count, uint16_t* const out[3]) {
    for (size_t channel = 0; channel < 3; ++channel)
        for (size_t i = 0; i < count; i += hn::Lanes(d16))
            hn::Store(hn::ShiftRightSame(hn::LoadU(d16, in[channel] + i), shift), d16, out[channel] + i);
}

void LookUpWords(const PixelPlanes& in, const uint16_t* table, size_t count, uint16_t* const out[3]) {
    for (size_t channel = 0; channel < 3; ++channel)
        for (size_t i = 0; i < count; ++i) out[channel][i] = table[in[channel][i]];
}

/** Looks up and stores in one pass: three loads and a store for each pixel, which no vector does faster. */
template <size_t kChannels>
void LookUpBytes(const PixelPlanes& in, const uint8_t* table, size_t count, uint8_t* out) {
    // Pointers of their own: the compiler must expect stores of bytes to change the array.
    const auto pixelAt = [table, first = in[0], second = in[1], third = in[2]](size_t i) {
        return uint32_t{table[first[i]]} | uint32_t{table[second[i]]} << 8 | uint32_t{table[third[i]]} << 16 |
               0xFF000000u;
    };
    // A pixel of three bytes overwrites one byte of the next.
    for (size_t i = 0; i + 1 < count; ++i, out += kChannels) {
        const uint32_t pixel = pixelAt(i);
        std::memcpy(out, &pixel, sizeof pixel);
    }
    const uint32_t last = pixelAt(count - 1);
    std::memcpy(out, &last, kChannels);
}

/** At most kChunk pixels. */
void Chunk(const PictureStep& step, PixelPlanes planes, size_t count, uint8_t* out) {
    HWY_ALIGN uint16_t memory[3][kChunk];
    uint16_t* const own[3] = {memory[0], memory[1], memory[2]};
    const auto change = [&](auto rule) {
        rule();
        planes = {own[0], own[1], own[2]};
    };
    if (step.matrix) change([&] { ApplyMatrix(*step.matrix, planes, count, own); });
    if (step.shift != 0) change([&] { Shift(planes, step.shift, count, own); });
    if (step.wordTable) change([&] { LookUpWords(planes, step.wordTable, count, own); });

    if (IsBlueFirst(step.destination)) std::swap(planes[0], planes[2]);
    const bool hasFourth = SamplesPerPixel(step.destination) == 4;
    if (step.byteTable) {
        const auto lookUp = hasFourth ? LookUpBytes<4> : LookUpBytes<3>;
        lookUp(planes, step.byteTable, count, out);
    } else if (step.destination.bits == 8) {
        const auto store = hasFourth ? StoreBytes<4> : StoreBytes<3>;
        store(planes, count, out);
    } else {
        const auto store = hasFourth ? StoreWords<4> : StoreWords<3>;
        store(planes, count, static_cast<uint16_t>(White(step.destination)), out);
    }
}

void Row(const PictureStep& step, const PixelPlanes& planes, size_t count, uint8_t* out) {
    const size_t pixelBytes = RowBytes(step.destination, 1);
    for (size_t first = 0; first < count; first += kChunk)
        Chunk(step, {planes[0] + first, planes[1] + first, planes[2] + first}, std::min(kChunk, count - first),
              out + first * pixelBytes);
}

}  // namespace
}  // namespace kvx::frame::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx::frame {

HWY_EXPORT(Row);

void MakePictureRow(const PictureStep& step, const PixelPlanes& planes, size_t count, uint8_t* out) {
    HWY_DYNAMIC_DISPATCH(Row)(step, planes, count, out);
}

}  // namespace kvx::frame
#endif
