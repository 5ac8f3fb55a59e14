#include "frame/camera/OutlierRow.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "frame/camera/OutlierRow.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kvx::frame::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

const hn::ScalableTag<uint16_t> d16;
const hn::Half<decltype(d16)> dHalf16;
const hn::Rebind<int32_t, decltype(dHalf16)> d32;
const hn::Rebind<float, decltype(dHalf16)> dFloat;
using Samples = hn::Vec<decltype(d16)>;
using HalfSamples = hn::Vec<decltype(dHalf16)>;
using Floats = hn::Vec<decltype(dFloat)>;

void PutBit(uint64_t* bits, uint64_t columns, size_t column) {
    bits[column / 64] |= columns & uint64_t{1} << column % 64;
}

/** One sample, with neighbours outside. */
void FindOne(const OutlierRows& rows, const OutlierLimits& limits, uint64_t columns, size_t column, uint64_t* bits) {
    const size_t distance = rows.distance;
    const bool hasLeft = column >= distance, hasRight = column + distance < rows.width;
    const size_t left = hasLeft ? column - distance : hasRight ? column + distance : column;
    const size_t right = hasRight ? column + distance : left;
    const uint16_t around[] = {rows.above[left], rows.above[column], rows.above[right],  rows.row[left],
                               rows.row[right],  rows.below[left],   rows.below[column], rows.below[right]};
    const auto [low, high] = std::minmax_element(std::begin(around), std::end(around));
    const uint16_t sample = rows.row[column];
    const bool isBright = sample > *high;
    if ((isBright || sample < *low) &&
        IsBeyond(limits, isBright ? sample - *high : *low - sample, isBright ? *high : *low, column))
        PutBit(bits, columns, column);
}

Floats Float(HalfSamples samples) {
    return hn::ConvertTo(dFloat, hn::PromoteTo(d32, samples));
}

/** Half a vector of IsBeyond(), as bits. */
uint64_t Beyond(HalfSamples differences, HalfSamples signals, Floats slopes, Floats intercepts, const int16_t* gains) {
    const Floats difference = Float(differences);
    Floats gain = hn::Set(dFloat, 1.0F);
    if (gains)
        gain =
            hn::Mul(hn::ConvertTo(dFloat, hn::PromoteTo(d32, hn::LoadU(hn::Rebind<int16_t, decltype(d32)>(), gains))),
                    hn::Set(dFloat, 1.0F / 4096));
    const Floats limit = hn::Mul(hn::Add(hn::Mul(slopes, Float(signals)), hn::Mul(intercepts, gain)), gain);
    uint8_t bytes[8] = {};
    hn::StoreMaskBits(dFloat, hn::Gt(hn::Mul(difference, difference), limit), bytes);
    uint64_t bits;
    std::memcpy(&bits, bytes, sizeof bits);
    return bits & ((uint64_t{1} << hn::Lanes(dFloat)) - 1);
}

Floats Repeated(const std::array<float, 4>& values) {
    HWY_ALIGN float turns[HWY_MAX_BYTES / sizeof(float)];
    for (size_t i = 0; i < hn::Lanes(dFloat); ++i) turns[i] = values[i % 4];
    return hn::Load(dFloat, turns);
}

void Find(const OutlierRows& rows, const OutlierLimits& limits, uint64_t columns, uint64_t* bits) {
    const size_t lanes = hn::Lanes(d16), distance = rows.distance;
    const Floats slopes = Repeated(limits.slopes), intercepts = Repeated(limits.intercepts);
    // No limit is lower than this one.
    const float least = std::sqrt(*std::min_element(limits.intercepts.begin(), limits.intercepts.end()));
    const auto threshold = hn::Set(d16, static_cast<uint16_t>(std::min(least, 65535.0F)));
    size_t column = 0;
    for (; column < std::min(lanes, rows.width); ++column) FindOne(rows, limits, columns, column, bits);
    for (; column + lanes + distance <= rows.width; column += lanes) {
        const auto at = [&](const uint16_t* row) { return hn::LoadU(d16, row + column); };
        const auto left = [&](const uint16_t* row) { return hn::LoadU(d16, row + (column - distance)); };
        const auto right = [&](const uint16_t* row) { return hn::LoadU(d16, row + (column + distance)); };
        const auto a = left(rows.above), b = at(rows.above), c = right(rows.above);
        const auto d = left(rows.row), e = right(rows.row);
        const auto f = left(rows.below), g = at(rows.below), h = right(rows.below);
        const auto high = hn::Max(hn::Max(hn::Max(a, b), hn::Max(c, d)), hn::Max(hn::Max(e, f), hn::Max(g, h)));
        const auto low = hn::Min(hn::Min(hn::Min(a, b), hn::Min(c, d)), hn::Min(hn::Min(e, f), hn::Min(g, h)));
        const auto sample = at(rows.row), above = hn::SaturatedSub(sample, high), below = hn::SaturatedSub(low, sample);
        const auto difference = hn::Or(above, below);  // one of them is 0
        if (hn::AllFalse(d16, hn::Gt(difference, threshold))) continue;
        const auto signal = hn::IfThenElse(hn::Gt(sample, high), high, low);
        const int16_t* const gains = limits.gains ? limits.gains + column : nullptr;
        const size_t half = lanes / 2;
        const uint64_t lower =
            Beyond(hn::LowerHalf(dHalf16, difference), hn::LowerHalf(dHalf16, signal), slopes, intercepts, gains);
        const uint64_t upper = Beyond(hn::UpperHalf(dHalf16, difference), hn::UpperHalf(dHalf16, signal), slopes,
                                      intercepts, gains ? gains + half : nullptr);
        bits[column / 64] |= (lower | upper << half) << column % 64 & columns;
    }
    for (; column < rows.width; ++column) FindOne(rows, limits, columns, column, bits);
}

}  // namespace
}  // namespace kvx::frame::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx::frame {

HWY_EXPORT(Find);

void FindOutliers(const OutlierRows& rows, const OutlierLimits& limits, uint64_t columns, uint64_t* bits) {
    HWY_DYNAMIC_DISPATCH(Find)(rows, limits, columns, bits);
}

}  // namespace kvx::frame
#endif
