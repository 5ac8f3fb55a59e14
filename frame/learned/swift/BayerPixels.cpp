#include "frame/learned/swift/SwiftRows.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "frame/learned/swift/BayerPixels.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "frame/learned/swift/Pixels-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::frame::HWY_NAMESPACE {
namespace {

HWY_INLINE V At(const int16_t* row, size_t column, ptrdiff_t distance) {
    return hn::LoadU(Words(), row + static_cast<ptrdiff_t>(column) + distance);
}

/** Samples of equal weight are added, then paired; a pair serves all filters. */
HWY_INLINE Sums<2> SumsAt(const SumRows& rows, size_t column, const LaneWords* filters) {
    Sums<2> sums;
    const auto add = [&](V first, V second, size_t pair) {
        const Words d;
        sums.Add(hn::InterleaveLower(d, first, second), hn::InterleaveUpper(d, first, second), filters + 4 * pair);
    };
    add(At(rows[0], column, 0), At(rows[1], column, 0), 0);
    add(At(rows[2], column, 0), At(rows[3], column, 0), 1);
#pragma GCC unroll 3
    for (ptrdiff_t distance = 1; distance <= kSwiftReach; ++distance) {
        const auto both = [&](size_t row) {
            return hn::Add(At(rows[row], column, -distance), At(rows[row], column, distance));
        };
        add(both(0), both(1), 2 * distance);
        add(both(2), both(3), 2 * distance + 1);
    }
    return sums;
}

template <class T, bool kIsSplit>
void Pixels(const PixelInput& input, const SumRows& rows, const SumRows* lower, const PixelRow& out) {
    const Words d;
    const PixelWriter<T> writer(input, out);
    const LaneWords* const filters = input.filters.colour.data();
    for (size_t column = 0; column < out.count; column += hn::Lanes(d)) {
        Sums<2> sums = SumsAt(rows, column, filters);
        V samples = At(rows[0], column, 0);
        if constexpr (kIsSplit) {
            sums.AddLower(SumsAt(*lower, column, filters));
            samples = hn::Or(hn::ShiftLeft<kLowerBits>(samples), At((*lower)[0], column, 0));
        }
        const V mix16 = hn::BitCast(d, hn::LoadU(Unsigned(), input.mix + column));
        const W mix[2] = {EvenWords(hn::InterleaveLower(d, mix16, mix16)),
                          EvenWords(hn::InterleaveUpper(d, mix16, mix16))};
        const V swapped = sums.Mixed(0, mix, input.shift), other = sums.Mixed(1, mix, input.shift);
        writer.Put(column, swapped, swapped, other, samples);
    }
}

template <class T>
void WholeOrSplit(const PixelInput& input, const SumRows& samples, const SumRows* lower, const PixelRow& out) {
    if (lower)
        Pixels<T, true>(input, samples, lower, out);
    else
        Pixels<T, false>(input, samples, lower, out);
}

void Bayer(const PixelInput& input, const SumRows& samples, const SumRows* lower, const PixelRow& out) {
    if (out.bits == 8)
        WholeOrSplit<uint8_t>(input, samples, lower, out);
    else
        WholeOrSplit<uint16_t>(input, samples, lower, out);
}

void AddedRows(const int16_t* const rows[7], size_t count, int16_t* const sums[3]) {
    const Words d;
    for (size_t column = 0; column < count + 2 * kSwiftReach; column += hn::Lanes(d))
        for (int distance = 1; distance <= kSwiftReach; ++distance) {
            const V both =
                hn::Add(At(rows[3 - distance], column, -kSwiftReach), At(rows[3 + distance], column, -kSwiftReach));
            hn::StoreU(both, d, sums[distance - 1] + static_cast<ptrdiff_t>(column) - kSwiftReach);
        }
}

}  // namespace
}  // namespace kvx::frame::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx::frame {

HWY_EXPORT(Bayer);
HWY_EXPORT(AddedRows);

void BayerPixels(const PixelInput& input, const SumRows& samples, const SumRows* lower, const PixelRow& out) {
    HWY_DYNAMIC_DISPATCH(Bayer)(input, samples, lower, out);
}

void AddRows(const int16_t* const rows[7], size_t count, int16_t* const sums[3]) {
    HWY_DYNAMIC_DISPATCH(AddedRows)(rows, count, sums);
}

}  // namespace kvx::frame
#endif
