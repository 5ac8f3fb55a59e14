#include "frame/learned/swift/SwiftRows.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "frame/learned/swift/TrueSensePixels.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "frame/learned/swift/Pixels-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::frame::HWY_NAMESPACE {
namespace {

/** Rows of samples, moved so that column 0 is the first of a pair of taps. */
struct TapRows {
    const int16_t* first[kTrueSenseTaps.size()];
    const int16_t* second[kTrueSenseTaps.size()];

    explicit TapRows(const int16_t* const samples[7]) {
        for (size_t i = 0; i < kTrueSenseTaps.size(); ++i) {
            const TapPair& taps = kTrueSenseTaps[i];
            first[i] = samples[3 + taps.rows[0]] + taps.columns[0];
            second[i] = samples[3 + taps.rows[1]] + taps.columns[1] - 1;
        }
    }
};

/** Every second pixel from `column` on, as many as two vectors of sums hold: neighbours in memory are pairs. */
template <size_t kColours>
HWY_INLINE Sums<kColours> SumsAt(const TapRows& taps, size_t column, const LaneWords* filters) {
    const Words d;
    const size_t next = column + hn::Lanes(d);
    Sums<kColours> sums;
    size_t pair = 0;
    for (; pair < kNeighbours; ++pair, filters += 2 * kColours)
        sums.Add(hn::LoadU(d, taps.first[pair] + column), hn::LoadU(d, taps.first[pair] + next), filters);
    for (; pair < kTrueSenseTaps.size(); ++pair, filters += 2 * kColours) {
        const auto both = [&](size_t place) {
            return hn::OddEven(hn::LoadU(d, taps.second[pair] + place), hn::LoadU(d, taps.first[pair] + place));
        };
        sums.Add(both(column), both(next), filters);
    }
    return sums;
}

void TrueSense(const PixelInput& input, const int16_t* const samples[7], const PixelRow& out) {
    const Words d;
    const size_t lanes = hn::Lanes(d);
    const PixelWriter writer(input, out);
    const Rounding rounding(input.shift);
    const TapRows taps(samples);
    const size_t firstPan = input.filters.firstPan, firstColour = 1 - firstPan;
    for (size_t column = 0; column < out.count; column += 2 * lanes) {
        const auto mixFrom = [&](size_t place) {
            return EvenWords(hn::BitCast(d, hn::LoadU(Unsigned(), input.mix + place)));
        };
        // Words of every second column, of two vectors of columns.
        V pan[3], swapped, other;
        {
            const size_t place = column + firstPan;
            const auto sums = SumsAt<3>(taps, place, input.filters.pan.data());
            const W mix[2] = {mixFrom(place), mixFrom(place + lanes)};
            for (size_t colour = 0; colour < 3; ++colour) pan[colour] = sums.Mixed(colour, mix, rounding);
        }
        {
            const size_t place = column + firstColour;
            const auto sums = SumsAt<2>(taps, place, input.filters.colour.data());
            const W mix[2] = {mixFrom(place), mixFrom(place + lanes)};
            swapped = sums.Mixed(0, mix, rounding);
            other = sums.Mixed(1, mix, rounding);
        }
        const V* const even[3] = {firstPan ? &swapped : &pan[0], firstPan ? &swapped : &pan[1],
                                  firstPan ? &other : &pan[2]};
        const V* const odd[3] = {firstPan ? &pan[0] : &swapped, firstPan ? &pan[1] : &swapped,
                                 firstPan ? &pan[2] : &other};
        const auto lower = [&](size_t i) { return hn::InterleaveLower(d, *even[i], *odd[i]); };
        const auto upper = [&](size_t i) { return hn::InterleaveUpper(d, *even[i], *odd[i]); };
        const auto known = [&](size_t place) { return hn::LoadU(d, samples[3] + place); };
        writer.Put(column, lower(0), lower(1), lower(2), known(column));
        writer.Put(column + lanes, upper(0), upper(1), upper(2), known(column + lanes));
    }
}

}  // namespace
}  // namespace kvx::frame::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx::frame {

HWY_EXPORT(TrueSense);

void TrueSensePixels(const PixelInput& input, const int16_t* const samples[7], const PixelRow& out) {
    HWY_DYNAMIC_DISPATCH(TrueSense)(input, samples, out);
}

}  // namespace kvx::frame
#endif
