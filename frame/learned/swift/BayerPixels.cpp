#include "frame/learned/swift/SwiftRows.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "frame/learned/swift/BayerPixels.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "frame/learned/swift/Pixels-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::frame::HWY_NAMESPACE {
namespace {

/** Columns that are computed together. What is added for them stays in the first-level cache. */
constexpr size_t kChunk = 448;

/** The samples of a row, and sums of those 1, 2 and 3 rows above and below, from a column on. */
struct SumRows {
    const int16_t* rows[1 + kSwiftReach];
};

HWY_INLINE V At(const int16_t* row, size_t column, ptrdiff_t distance) {
    return hn::LoadU(Words(), row + static_cast<ptrdiff_t>(column) + distance);
}

/** Working rows of a chunk. */
class AddedRows {
public:
    /** @param samples seven rows, the fourth is in the middle */
    HWY_INLINE SumRows Of(const int16_t* const samples[7], size_t first, size_t columns) {
        SumRows sums;
        sums.rows[0] = samples[kSwiftReach] + first;
        for (int distance = 1; distance <= kSwiftReach; ++distance) {
            const int16_t* const above = samples[kSwiftReach - distance] + first;
            const int16_t* const below = samples[kSwiftReach + distance] + first;
            int16_t* const out = m_rows[distance - 1];
            for (size_t column = 0; column < columns + size_t{2} * kSwiftReach; column += hn::Lanes(Words()))
                hn::Store(hn::Add(At(above, column, -kSwiftReach), At(below, column, -kSwiftReach)), Words(),
                          out + column);
            sums.rows[distance] = out + kSwiftReach;
        }
        return sums;
    }

private:
    HWY_ALIGN int16_t m_rows[kSwiftReach][kChunk + kRowSlack - kRowSlack % 32];
};

/** Samples of equal weight are added, then paired; a pair serves all filters that have it. */
HWY_INLINE Sums<2> SumsAt(const SumRows& samples, size_t column, const LaneWords* filters) {
    const Words d;
    Sums<2> sums;
#pragma GCC unroll 6
    for (size_t pair = 0; pair < kBayerTaps.size(); ++pair) {
        const TapPair& taps = kBayerTaps[pair];
        const auto tap = [&](size_t i) {
            const int16_t* const row = samples.rows[taps.rows[i]];
            const V left = At(row, column, -taps.columns[i]);
            return taps.columns[i] == 0 ? left : hn::Add(left, At(row, column, taps.columns[i]));
        };
        const V first = tap(0), second = tap(1);
        sums.Add(hn::InterleaveLower(d, first, second), hn::InterleaveUpper(d, first, second), filters + 4 * pair,
                 taps.isAlongRows, taps.isAlongColumns);
    }
    return sums;
}

template <bool kIsSplit>
void Pixels(const PixelInput& input, const int16_t* const samples[7], const int16_t* const lower[7],
            const PixelRow& out) {
    const Words d;
    const PixelWriter writer(input, out);
    const Rounding rounding(input.shift);
    const LaneWords* const filters = input.filters.colour.data();
    AddedRows added, addedLower;
    for (size_t first = 0; first < out.count; first += kChunk) {
        const size_t columns = std::min(kChunk, out.count - first);
        const SumRows rows = added.Of(samples, first, columns);
        const SumRows lowerRows = kIsSplit ? addedLower.Of(lower, first, columns) : SumRows{};
        for (size_t column = 0; column < columns; column += hn::Lanes(d)) {
            Sums<2> sums = SumsAt(rows, column, filters);
            V given = At(rows.rows[0], column, 0);
            if constexpr (kIsSplit) {
                sums.AddLower(SumsAt(lowerRows, column, filters));
                given = hn::Or(hn::ShiftLeft<kLowerBits>(given), At(lowerRows.rows[0], column, 0));
            }
            const V mixes = hn::BitCast(d, hn::LoadU(Unsigned(), input.mix + first + column));
            const W mix[2] = {EvenWords(hn::InterleaveLower(d, mixes, mixes)),
                              EvenWords(hn::InterleaveUpper(d, mixes, mixes))};
            const V swapped = sums.Mixed(0, mix, rounding), other = sums.Mixed(1, mix, rounding);
            writer.Put(first + column, swapped, swapped, other, given);
        }
    }
}

void Bayer(const PixelInput& input, const int16_t* const samples[7], const int16_t* const lower[7],
           const PixelRow& out) {
    if (lower)
        Pixels<true>(input, samples, lower, out);
    else
        Pixels<false>(input, samples, lower, out);
}

}  // namespace
}  // namespace kvx::frame::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx::frame {

HWY_EXPORT(Bayer);

void BayerPixels(const PixelInput& input, const int16_t* const samples[7], const int16_t* const lower[7],
                 const PixelRow& out) {
    HWY_DYNAMIC_DISPATCH(Bayer)(input, samples, lower, out);
}

}  // namespace kvx::frame
#endif
