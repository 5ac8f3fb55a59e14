#include "KvxBayer/BilinearRow.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "KvxBayer/BilinearRow.cpp"
#include <hwy/foreach_target.h>  // compiles this file once per instruction set
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kvx::HWY_NAMESPACE {
namespace {
namespace hn = hwy::HWY_NAMESPACE;

using Words = hn::ScalableTag<uint16_t>;
using Vec = hn::Vec<Words>;
constexpr Words kWords;

/** Mean of four from the rounded means of the two pairs: rounding twice is one too much where a half was rounded up in
    a pair and again between the pairs. Exact for all 16 bits, without wider lanes. */
Vec MeanOfFour(Vec a, Vec b, Vec meanAB, Vec c, Vec d, Vec meanCD) {
    const auto halfInAPair = hn::Or(hn::Xor(a, b), hn::Xor(c, d));
    const auto halfBetween = hn::Xor(meanAB, meanCD);
    const auto tooMuch = hn::And(hn::And(halfInAPair, halfBetween), hn::Set(kWords, uint16_t{1}));
    return hn::Sub(hn::AverageRound(meanAB, meanCD), tooMuch);
}

struct StoreWords {
    using Sample = uint16_t;
    explicit StoreWords(int /*shift*/) {}
    uint16_t One(uint16_t sample) const {
        return sample;
    }
    void Many(Vec a, Vec b, Vec c, uint16_t* out) const {
        hn::StoreInterleaved3(a, b, c, kWords, out);
    }
};

/** Bytes by a rule of `Derived` for a vector of words. */
template <class Derived>
struct StoreBytes {
    using Sample = uint8_t;
    explicit StoreBytes(int shiftBits) : shift(shiftBits) {}
    void Many(Vec a, Vec b, Vec c, uint8_t* out) const {
        const hn::Rebind<uint8_t, Words> bytes;
        const Derived& rule = static_cast<const Derived&>(*this);
        hn::StoreInterleaved3(hn::TruncateTo(bytes, rule.Reduced(a)), hn::TruncateTo(bytes, rule.Reduced(b)),
                              hn::TruncateTo(bytes, rule.Reduced(c)), bytes, out);
    }
    int shift;
};

struct StoreShifted : StoreBytes<StoreShifted> {
    using StoreBytes::StoreBytes;
    uint8_t One(uint16_t sample) const {
        return static_cast<uint8_t>(sample >> shift);
    }
    Vec Reduced(Vec samples) const {
        return hn::ShiftRightSame(samples, shift);
    }
};

struct StoreRounded : StoreBytes<StoreRounded> {
    using StoreBytes::StoreBytes;
    uint8_t One(uint16_t sample) const {
        return RoundedByte(sample, shift);
    }
    Vec Reduced(Vec samples) const {
        const auto justBelowHalf = hn::Set(kWords, static_cast<uint16_t>((1 << (shift - 1)) - 1));
        const auto odd = hn::And(hn::ShiftRightSame(samples, shift), hn::Set(kWords, uint16_t{1}));
        // A sum that saturates at 65535 is 255 or more after the shift, as it would be with wider lanes.
        const auto rounded = hn::ShiftRightSame(hn::SaturatedAdd(samples, hn::Add(justBelowHalf, odd)), shift);
        return hn::Min(rounded, hn::Set(kWords, uint16_t{255}));
    }
};

/** Converts the sites from `column` on, as many as a vector has. */
template <class Store>
HWY_INLINE void ConvertVector(const BilinearRow& row, size_t column, const Store& store, typename Store::Sample* out) {
    const auto at = [column](const uint16_t* samples, int offset) {
        return hn::LoadU(kWords, samples + column + offset);
    };
    const auto above = at(row.above, 0), below = at(row.below, 0);
    const auto left = at(row.centre, -1), centre = at(row.centre, 0), right = at(row.centre, 1);
    const auto aboveLeft = at(row.above, -1), aboveRight = at(row.above, 1);
    const auto belowLeft = at(row.below, -1), belowRight = at(row.below, 1);

    const auto vertical = hn::AverageRound(above, below);
    const auto horizontal = hn::AverageRound(left, right);
    const auto cross = MeanOfFour(above, below, vertical, left, right, horizontal);
    const auto diagonal = MeanOfFour(aboveLeft, belowLeft, hn::AverageRound(aboveLeft, belowLeft), aboveRight,
                                     belowRight, hn::AverageRound(aboveRight, belowRight));

    const auto lane = hn::And(hn::Iota(kWords, uint16_t{0}), hn::Set(kWords, uint16_t{1}));
    const auto greenLane = hn::Set(kWords, static_cast<uint16_t>((column % 2 == 0) == row.greenFirst ? 0 : 1));
    const auto isGreen = hn::Eq(lane, greenLane);
    const auto rowColour = hn::IfThenElse(isGreen, horizontal, centre);
    const auto green = hn::IfThenElse(isGreen, centre, cross);
    const auto otherColour = hn::IfThenElse(isGreen, vertical, diagonal);
    if (row.rowColourFirst)
        store.Many(rowColour, green, otherColour, out + 3 * column);
    else
        store.Many(otherColour, green, rowColour, out + 3 * column);
}

template <class Store>
void ConvertSite(const BilinearRow& row, size_t column, const Store& store, typename Store::Sample* out) {
    const BilinearPixel pixel = BilinearSite(row, column);
    out[3 * column] = store.One(row.rowColourFirst ? pixel.rowColour : pixel.otherColour);
    out[3 * column + 1] = store.One(pixel.green);
    out[3 * column + 2] = store.One(row.rowColourFirst ? pixel.otherColour : pixel.rowColour);
}

template <class Store>
void ConvertRowWith(const BilinearRow& row, typename Store::Sample* out) {
    const Store store(row.output.shift);
    const size_t end = row.width - 1;
    const size_t lanes = hn::Lanes(kWords);
    size_t column = 1;
    for (; column + lanes <= end; column += lanes) ConvertVector(row, column, store, out);
    if (column < end && end >= lanes + 1) {
        ConvertVector(row, end - lanes, store, out);  // the rest once more together with some that are done
    } else {
        for (; column < end; ++column) ConvertSite(row, column, store, out);
    }
    std::copy_n(out + 3, 3, out);
    std::copy_n(out + 3 * (end - 1), 3, out + 3 * end);
}

void ConvertRow(const BilinearRow& row, void* out) {
    switch (row.output.form) {
        case BayerOutput::Samples:
            return ConvertRowWith<StoreWords>(row, static_cast<uint16_t*>(out));
        case BayerOutput::ShiftedBytes:
            return ConvertRowWith<StoreShifted>(row, static_cast<uint8_t*>(out));
        case BayerOutput::RoundedBytes:
            return ConvertRowWith<StoreRounded>(row, static_cast<uint8_t*>(out));
    }
}

}  // namespace
}  // namespace kvx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx {

HWY_EXPORT(ConvertRow);

void ConvertBilinearRow(const BilinearRow& row, void* out) {
    HWY_DYNAMIC_DISPATCH(ConvertRow)(row, out);
}

}  // namespace kvx
#endif
