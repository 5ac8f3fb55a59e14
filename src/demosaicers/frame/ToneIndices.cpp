#include "demosaicers/frame/ToneIndices.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "demosaicers/frame/ToneIndices.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kvx::HWY_NAMESPACE {
namespace {
namespace hn = hwy::HWY_NAMESPACE;

void Clamp(const int16_t* const planes[kChannels], size_t count, uint16_t* const indices[kChannels]) {
    const hn::ScalableTag<int16_t> d;
    const hn::RebindToUnsigned<decltype(d)> unsignedLanes;
    const auto lowest = hn::Zero(d), highest = hn::Set(d, int16_t{KVX_TONE_TABLE_SIZE - 1});
    for (int channel = 0; channel < kChannels; ++channel)
        for (size_t i = 0; i < count; i += hn::Lanes(d)) {
            const auto value = hn::Min(hn::Max(hn::LoadU(d, planes[channel] + i), lowest), highest);
            hn::StoreU(hn::BitCast(unsignedLanes, value), unsignedLanes, indices[channel] + i);
        }
}

/** The matrix in double for the values from `begin` on, a vector at a time. */
template <bool kMayBeNaN>
void MatrixInDouble(const int16_t* const planes[kChannels], const ColourMatrix& matrix, size_t begin, size_t end,
                    uint16_t* const indices[kChannels]) {
    const hn::ScalableTag<double> d;
    const hn::Rebind<int32_t, decltype(d)> words;
    const hn::Rebind<int16_t, decltype(d)> samples;
    const hn::Rebind<uint16_t, decltype(d)> results;
    const auto highest = hn::Set(results, uint16_t{KVX_TONE_TABLE_SIZE - 1});
    const auto load = [=](const int16_t* at) { return hn::PromoteTo(d, hn::PromoteTo(words, hn::LoadU(samples, at))); };
    for (size_t i = begin; i < end; i += hn::Lanes(d)) {
        const auto red = load(planes[0] + i), green = load(planes[1] + i), blue = load(planes[2] + i);
        for (int channel = 0; channel < kChannels; ++channel) {
            const auto entry = [&](int input) { return hn::Set(d, matrix[channel * kChannels + input]); };
            auto sum = hn::Add(hn::Add(hn::Mul(entry(0), red), hn::Mul(entry(1), green)), hn::Mul(entry(2), blue));
            if constexpr (kMayBeNaN) sum = hn::IfThenElseZero(hn::Eq(sum, sum), sum);
            const auto value = hn::DemoteTo(results, hn::DemoteTo(words, sum));  // saturates twice; negative: 0
            hn::StoreU(hn::Min(value, highest), results, indices[channel] + i);
        }
    }
}

void MatrixInDoubleNumbers(const int16_t* const planes[kChannels], const ColourMatrix& matrix, size_t count,
                           uint16_t* const indices[kChannels]) {
    MatrixInDouble<true>(planes, matrix, 0, count, indices);
}

#if HWY_ARCH_X86 && HWY_TARGET != HWY_EMU128 && HWY_TARGET != HWY_SCALAR

/** Adds the products of pairs of neighbours to `sum`, which is what the operation below does on x86. */
template <class D32, class V16, class V32>
V32 AddPairs(D32 d, V16 a, V16 b, V32 sum) {
    auto unused = hn::Zero(d);
    return hn::ReorderWidenMulAccumulate(d, a, b, sum, unused);
}

/** Rows of a FixedMatrix: entries two by two, for pairs of (red, green) and of (blue, 1). */
struct EntryPairs {
    hn::Vec<hn::ScalableTag<int16_t>> coarse01, coarse2, fine01, fine2;

    EntryPairs(const FixedMatrix::Row& row)
        : coarse01(Pair(row.coarse[0], row.coarse[1])),
          coarse2(Pair(row.coarse[2], FixedMatrix::kMargin)),
          fine01(Pair(row.fine[0], row.fine[1])),
          fine2(Pair(row.fine[2], 0)) {}

    static hn::Vec<hn::ScalableTag<int16_t>> Pair(int first, int second) {
        return hn::BitCast(hn::ScalableTag<int16_t>(),
                           hn::Set(hn::ScalableTag<int32_t>(), (first & 0xFFFF) | second * (1 << 16)));
    }
};

/** See FixedMatrix: vectors with a doubtful value are computed again in double. */
void MatrixInFixedPoint(const int16_t* const planes[kChannels], const ColourMatrix& matrix, const FixedMatrix& fixed,
                        size_t count, uint16_t* const indices[kChannels]) {
    const hn::ScalableTag<int16_t> d;
    const hn::RepartitionToWide<decltype(d)> wide;
    const hn::RebindToUnsigned<decltype(d)> results;
    const EntryPairs rows[] = {fixed.rows[0], fixed.rows[1], fixed.rows[2]};
    const auto one = hn::Set(d, int16_t{1}), highest = hn::Set(d, int16_t{KVX_TONE_TABLE_SIZE - 1});
    const int fractionBits = fixed.fractionBits;
    const auto fraction = hn::Set(wide, (1 << fractionBits) - 1);
    const auto doubtful = hn::Set(wide, FixedMatrix::kDoubtful);

    for (size_t i = 0; i < count; i += hn::Lanes(d)) {
        const auto red = hn::LoadU(d, planes[0] + i), green = hn::LoadU(d, planes[1] + i);
        const auto blue = hn::LoadU(d, planes[2] + i);
        const auto redGreen0 = hn::InterleaveLower(d, red, green), redGreen1 = hn::InterleaveUpper(d, red, green);
        const auto blueOne0 = hn::InterleaveLower(d, blue, one), blueOne1 = hn::InterleaveUpper(d, blue, one);
        auto nearest = fraction;  // distance from a whole number, the least of all
        for (int channel = 0; channel < kChannels; ++channel) {
            const EntryPairs& row = rows[channel];
            const auto integerPart = [&](auto redGreen, auto blueOne) {
                const auto none = hn::Zero(wide);
                const auto coarse = AddPairs(wide, redGreen, row.coarse01, AddPairs(wide, blueOne, row.coarse2, none));
                const auto fine = AddPairs(wide, redGreen, row.fine01, AddPairs(wide, blueOne, row.fine2, none));
                // Negative sums and black, less than `doubtful`, become 0 and are not in doubt.
                const auto z = hn::Max(hn::Add(coarse, hn::ShiftRight<15>(fine)), doubtful);
                nearest = hn::Min(nearest, hn::And(z, fraction));
                return hn::ShiftRightSame(z, fractionBits);
            };
            const auto value0 = integerPart(redGreen0, blueOne0), value1 = integerPart(redGreen1, blueOne1);
            const auto value = hn::Min(hn::ReorderDemote2To(d, value0, value1), highest);  // undoes the interleaving
            hn::StoreU(hn::BitCast(results, value), results, indices[channel] + i);
        }
        if (hn::AllFalse(wide, hn::Lt(nearest, doubtful))) continue;
        const auto isLikeFirst = [&](auto plane, int channel) { return hn::Eq(plane, hn::Set(d, planes[channel][i])); };
        const auto likeFirst = hn::And(isLikeFirst(red, 0), hn::And(isLikeFirst(green, 1), isLikeFirst(blue, 2)));
        const bool isFlat = hn::AllTrue(d, likeFirst);  // as in saturated areas, whose greys are always in doubt
        MatrixInDouble<false>(planes, matrix, i, isFlat ? i + 1 : i + hn::Lanes(d), indices);
        if (!isFlat) continue;
        for (int channel = 0; channel < kChannels; ++channel)
            hn::StoreU(hn::Set(results, indices[channel][i]), results, indices[channel] + i);
    }
}

#else

void MatrixInFixedPoint(const int16_t* const planes[kChannels], const ColourMatrix& matrix, const FixedMatrix&,
                        size_t count, uint16_t* const indices[kChannels]) {
    MatrixInDouble<false>(planes, matrix, 0, count, indices);
}

#endif

}  // namespace
}  // namespace kvx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx {

HWY_EXPORT(Clamp);
HWY_EXPORT(MatrixInDoubleNumbers);
HWY_EXPORT(MatrixInFixedPoint);

void ToneIndices(const int16_t* const planes[kChannels], size_t count, uint16_t* const indices[kChannels]) {
    HWY_DYNAMIC_DISPATCH(Clamp)(planes, count, indices);
}
void ToneIndices(const int16_t* const planes[kChannels], const ColourMatrix& matrix, const FixedMatrix& fixed,
                 size_t count, uint16_t* const indices[kChannels]) {
    if (fixed.isUsable)
        HWY_DYNAMIC_DISPATCH(MatrixInFixedPoint)(planes, matrix, fixed, count, indices);
    else
        HWY_DYNAMIC_DISPATCH(MatrixInDoubleNumbers)(planes, matrix, count, indices);
}

}  // namespace kvx
#endif
