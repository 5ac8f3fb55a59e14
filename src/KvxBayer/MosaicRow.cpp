#include "KvxBayer/MosaicRow.h"

#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "KvxBayer/MosaicRow.cpp"
#include <hwy/foreach_target.h>  // compiles this file once per instruction set
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kvx::HWY_NAMESPACE {
namespace {
namespace hn = hwy::HWY_NAMESPACE;

template <class T>
using Tag = hn::ScalableTag<T>;
template <class T>
using Vec = hn::Vec<Tag<T>>;

/**
 * Mean of four from the rounded means of two pairs. The result is one too high where a half was rounded up in a pair
 * and again between the pairs; subtracting that is exact and needs no wider lanes.
 */
template <class T, class V = Vec<T>>
HWY_INLINE V MeanOfFour(V a, V b, V meanAB, V c, V d, V meanCD) {
    const auto halfInAPair = hn::Or(hn::Xor(a, b), hn::Xor(c, d));
    const auto halfBetween = hn::Xor(meanAB, meanCD);
    const auto tooMuch = hn::And(hn::And(halfInAPair, halfBetween), hn::Set(Tag<T>(), T{1}));
    return hn::Sub(hn::AverageRound(meanAB, meanCD), tooMuch);
}

template <class V>
HWY_INLINE V Difference(V a, V b) {
    return hn::Sub(hn::Max(a, b), hn::Min(a, b));
}

/** The fourth sample of a pixel is 255. */
template <size_t kChannels, class D, class V>
HWY_INLINE void StorePixels(D d, V a, V b, V c, hn::TFromD<D>* out) {
    if constexpr (kChannels == 4)
        hn::StoreInterleaved4(a, b, c, hn::Set(d, 255), d, out);
    else
        hn::StoreInterleaved3(a, b, c, d, out);
}

// Ways to store three vectors of samples, as pixels of three or four samples.

template <class T, size_t kChannels>
struct StoreSamples {
    static constexpr size_t kPixelBytes = kChannels * sizeof(T);
    explicit StoreSamples(int /*shift*/) {}
    void Many(Vec<T> a, Vec<T> b, Vec<T> c, uint8_t* out) const {
        if constexpr (HWY_TARGET == HWY_EMU128) {           // stores sample by sample, which odd addresses do not allow
            T samples[kChannels * size_t{16} / sizeof(T)];  // vectors of 16 bytes
            StorePixels<kChannels>(Tag<T>(), a, b, c, samples);
            std::memcpy(out, samples, sizeof samples);
        } else {
            StorePixels<kChannels>(Tag<T>(), a, b, c, reinterpret_cast<T*>(out));
        }
    }
};

/** Bytes from words, by the rule of `Derived`. */
template <class Derived, size_t kChannels>
struct StoreBytes {
    static constexpr size_t kPixelBytes = kChannels;
    explicit StoreBytes(int shiftBits) : shift(shiftBits) {}
    void Many(Vec<uint16_t> a, Vec<uint16_t> b, Vec<uint16_t> c, uint8_t* out) const {
        const hn::Rebind<uint8_t, Tag<uint16_t>> bytes;
        const Derived& rule = static_cast<const Derived&>(*this);
        StorePixels<kChannels>(bytes, hn::TruncateTo(bytes, rule.Reduced(a)), hn::TruncateTo(bytes, rule.Reduced(b)),
                               hn::TruncateTo(bytes, rule.Reduced(c)), out);
    }
    int shift;
};

template <size_t kChannels>
struct StoreShifted : StoreBytes<StoreShifted<kChannels>, kChannels> {
    using StoreBytes<StoreShifted, kChannels>::StoreBytes;
    Vec<uint16_t> Reduced(Vec<uint16_t> samples) const {
        return hn::ShiftRightSame(samples, this->shift);
    }
};

struct StoreRounded : StoreBytes<StoreRounded, 3> {
    using StoreBytes::StoreBytes;
    Vec<uint16_t> Reduced(Vec<uint16_t> samples) const {
        const Tag<uint16_t> words;
        const auto justBelowHalf = hn::Set(words, static_cast<uint16_t>((1 << (shift - 1)) - 1));
        const auto odd = hn::And(hn::ShiftRightSame(samples, shift), hn::Set(words, uint16_t{1}));
        // A sum that saturates at 65535 is 255 or more after the shift, as it would be with wider lanes.
        const auto rounded = hn::ShiftRightSame(hn::SaturatedAdd(samples, hn::Add(justBelowHalf, odd)), shift);
        return hn::Min(rounded, hn::Set(words, uint16_t{255}));
    }
};

/** The pixels of one vector of sites. */
template <class T>
struct Pixels {
    Vec<T> rowColour, green, otherColour;
};

template <class T, GreenRule rule>
HWY_INLINE Pixels<T> PixelsAt(const MosaicRow& row, size_t column) {
    const Tag<T> d;
    const auto at = [d, column](const uint8_t* samples, ptrdiff_t offset) {
        return hn::LoadU(d, reinterpret_cast<const T*>(samples + column * sizeof(T)) + offset);
    };
    const auto above = at(row.above, 0), below = at(row.below, 0);
    const auto left = at(row.centre, -1), centre = at(row.centre, 0), right = at(row.centre, 1);
    const auto aboveLeft = at(row.above, -1), aboveRight = at(row.above, 1);
    const auto belowLeft = at(row.below, -1), belowRight = at(row.below, 1);

    const auto vertical = hn::AverageRound(above, below);
    const auto horizontal = hn::AverageRound(left, right);
    const auto corners = MeanOfFour<T>(aboveLeft, belowLeft, hn::AverageRound(aboveLeft, belowLeft), aboveRight,
                                       belowRight, hn::AverageRound(aboveRight, belowRight));
    auto cross = horizontal;
    if constexpr (rule == GreenRule::Mean) {
        cross = MeanOfFour<T>(above, below, vertical, left, right, horizontal);
    } else {
        cross = hn::IfThenElse(hn::Gt(Difference(left, right), Difference(above, below)), vertical, horizontal);
    }

    const auto parity = hn::And(hn::Iota(d, T{0}), hn::Set(d, T{1}));
    const auto greenParity = hn::Set(d, static_cast<T>((column % 2 == 0) == row.greenFirst ? 0 : 1));
    const auto isGreen = hn::Eq(parity, greenParity);
    return {hn::IfThenElse(isGreen, horizontal, centre), hn::IfThenElse(isGreen, centre, cross),
            hn::IfThenElse(isGreen, vertical, corners)};
}

/** Converts one vector of sites from `column` on. */
template <class T, GreenRule rule, class Store>
HWY_INLINE void ConvertVector(const MosaicRow& row, size_t column, const Store& store, uint8_t* out) {
    const Pixels<T> pixels = PixelsAt<T, rule>(row, column);
    out += column * Store::kPixelBytes;
    if (row.rowColourFirst)
        store.Many(pixels.rowColour, pixels.green, pixels.otherColour, out);
    else
        store.Many(pixels.otherColour, pixels.green, pixels.rowColour, out);
}

/** A row with at most as many sites between its ends as a vector has lanes: it is widened to a vector on the way. */
template <class T, GreenRule rule, class Store>
void ConvertNarrow(const MosaicRow& row, const Store& store, uint8_t* out) {
    constexpr size_t lanes = hn::MaxLanes(Tag<T>()), pixel = Store::kPixelBytes;
    T samples[3][lanes + 2] = {};
    uint8_t pixels[(lanes + 1) * pixel];
    MosaicRow wide = row;
    const uint8_t** const wideRows[] = {&wide.above, &wide.centre, &wide.below};
    for (size_t i = 0; i < 3; ++i) {
        std::memcpy(samples[i], *wideRows[i], row.width * sizeof(T));
        *wideRows[i] = reinterpret_cast<const uint8_t*>(samples[i]);
    }
    ConvertVector<T, rule>(wide, 1, store, pixels);
    std::memcpy(out + pixel, pixels + pixel, (row.width - 2) * pixel);
}

template <class T, GreenRule rule, class Store>
void ConvertSites(const MosaicRow& row, uint8_t* out) {
    const Store store(row.output.shift);
    const size_t lanes = hn::Lanes(Tag<T>());
    const size_t end = row.width - 1;
    if (end <= lanes) {
        ConvertNarrow<T, rule>(row, store, out);
    } else {
        for (size_t column = 1; column + lanes <= end; column += lanes) ConvertVector<T, rule>(row, column, store, out);
        ConvertVector<T, rule>(row, end - lanes, store, out);  // the rest, and once more some that are done
    }
    constexpr size_t pixel = Store::kPixelBytes;
    std::memcpy(out, out + pixel, pixel);
    std::memcpy(out + end * pixel, out + (end - 1) * pixel, pixel);
}

template <class T, class Store>
void ConvertByRule(const MosaicRow& row, uint8_t* out) {
    if (row.rule == GreenRule::Mean)
        ConvertSites<T, GreenRule::Mean, Store>(row, out);
    else
        ConvertSites<T, GreenRule::EdgeAware, Store>(row, out);
}

void ConvertRow(const MosaicRow& row, uint8_t* out) {
    const bool hasAlpha = row.output.pixel == BayerPixel::WithAlpha;
    switch (row.output.form) {
        case BayerOutput::Samples:
            if (hasAlpha) return ConvertByRule<uint8_t, StoreSamples<uint8_t, 4>>(row, out);
            return row.sampleSize == 1 ? ConvertByRule<uint8_t, StoreSamples<uint8_t, 3>>(row, out)
                                       : ConvertByRule<uint16_t, StoreSamples<uint16_t, 3>>(row, out);
        case BayerOutput::ShiftedBytes:
            return hasAlpha ? ConvertByRule<uint16_t, StoreShifted<4>>(row, out)
                            : ConvertByRule<uint16_t, StoreShifted<3>>(row, out);
        case BayerOutput::RoundedBytes:
            return ConvertByRule<uint16_t, StoreRounded>(row, out);
    }
}

template <GreenRule rule>
void ConvertPlanesByRule(const MosaicRow& row, uint16_t* const planes[3]) {
    const Tag<uint16_t> d;
    for (size_t column = 1; column + 1 < row.width; column += hn::Lanes(d)) {
        const Pixels<uint16_t> pixels = PixelsAt<uint16_t, rule>(row, column);
        hn::StoreU(pixels.rowColour, d, planes[0] + column);
        hn::StoreU(pixels.green, d, planes[1] + column);
        hn::StoreU(pixels.otherColour, d, planes[2] + column);
    }
    for (size_t channel = 0; channel < 3; ++channel) {
        uint16_t* const plane = planes[channel];
        plane[0] = plane[1];
        plane[row.width - 1] = plane[row.width - 2];
    }
}

void ConvertPlanes(const MosaicRow& row, uint16_t* const planes[3]) {
    if (row.rule == GreenRule::Mean)
        ConvertPlanesByRule<GreenRule::Mean>(row, planes);
    else
        ConvertPlanesByRule<GreenRule::EdgeAware>(row, planes);
}

}  // namespace
}  // namespace kvx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx {

HWY_EXPORT(ConvertRow);
HWY_EXPORT(ConvertPlanes);

void ConvertMosaicRow(const MosaicRow& row, uint8_t* out) {
    HWY_DYNAMIC_DISPATCH(ConvertRow)(row, out);
}

void ConvertMosaicPlanes(const MosaicRow& row, uint16_t* const planes[3]) {
    HWY_DYNAMIC_DISPATCH(ConvertPlanes)(row, planes);
}

}  // namespace kvx
#endif
