#include "demosaicers/denoising/LowRows.h"

#include <algorithm>
#include <cstdlib>

#include "demosaicers/denoising/PaddedPlane.h"
#include "pipeline/SigmaFilter.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "demosaicers/denoising/LowRows.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kvx::HWY_NAMESPACE {
namespace {
namespace hn = hwy::HWY_NAMESPACE;

using Words = hn::ScalableTag<int32_t>;
using Floats = hn::RebindToFloat<Words>;
using Codes = hn::Rebind<int16_t, Words>;

void SumCells(const CellPan& pan, size_t cells, int32_t* lowPan) {
    const Words d;
    const Codes codes;
    for (size_t k = 0; k < cells; k += hn::Lanes(d)) {
        const auto upper = hn::Add(hn::LoadU(codes, pan.upper + k), hn::LoadU(codes, pan.upperAtColour + k));
        const auto lower = hn::Add(hn::LoadU(codes, pan.lower + k), hn::LoadU(codes, pan.lowerAtColour + k));
        hn::StoreU(hn::ShiftLeft<14>(hn::PromoteTo(d, hn::Add(upper, lower))), d, lowPan + k);
    }
}

/** For cells with neighbours on both sides. */
void FilterImpulsesInside(const std::array<const int16_t*, 3>& rows, size_t cells, int16_t* filtered) {
    const hn::ScalableTag<int16_t> d;
    for (size_t k = 2; k + 2 < cells; k += hn::Lanes(d)) {
        auto least = hn::Min(hn::LoadU(d, rows[1] + k - 2), hn::LoadU(d, rows[1] + k + 2));
        auto most = hn::Max(hn::LoadU(d, rows[1] + k - 2), hn::LoadU(d, rows[1] + k + 2));
        for (const int16_t* row : {rows[0], rows[2]}) {
            if (!row) continue;
            for (const ptrdiff_t by : {-2, 0, 2}) {
                const auto neighbour = hn::LoadU(d, row + k + by);
                least = hn::Min(least, neighbour);
                most = hn::Max(most, neighbour);
            }
        }
        hn::StoreU(hn::Min(hn::Max(hn::LoadU(d, rows[1] + k), least), most), d, filtered + k);
    }
}

void AddLowColour(const int32_t* lowPan, const int16_t* difference, size_t cells, int16_t* lowColour,
                  int32_t* lowColorDiff) {
    const Words d;
    const Codes codes;
    for (size_t k = 0; k < cells; k += hn::Lanes(d)) {
        const auto wide = hn::ShiftLeft<kFractionBits>(hn::PromoteTo(d, hn::LoadU(codes, difference + k)));
        const auto code = hn::ShiftRight<kFractionBits>(hn::Add(hn::LoadU(d, lowPan + k), wide));
        const auto inside = hn::Min(hn::Max(code, hn::Zero(d)), hn::Set(d, kGammaCodes - 1));
        hn::StoreU(hn::DemoteTo(codes, inside), codes, lowColour + k);
        hn::StoreU(wide, d, lowColorDiff + k);
    }
}

hn::Vec<Words> Load(const int32_t* from) {
    return hn::LoadU(Words(), from);
}
hn::Vec<Words> Load(const int16_t* from) {
    return hn::PromoteTo(Words(), hn::LoadU(Codes(), from));
}

template <class Value>
void LocalCodesOf(const Value* row, ptrdiff_t rowStep, size_t step, size_t cells, int16_t* codes) {
    constexpr int fraction = 4 + (sizeof(Value) == sizeof(int32_t) ? kFractionBits : 0);
    const Words d;
    const auto across = static_cast<ptrdiff_t>(step);
    const Value *up = row - rowStep, *down = row + rowStep;
    for (size_t k = 0; k < cells; k += hn::Lanes(d)) {
        const auto corners = hn::Add(hn::Add(Load(up + k - across), Load(up + k + across)),
                                     hn::Add(Load(down + k - across), Load(down + k + across)));
        const auto sides =
            hn::Add(hn::Add(Load(up + k), Load(down + k)), hn::Add(Load(row + k - across), Load(row + k + across)));
        const auto sum = hn::Add(hn::Add(corners, hn::ShiftLeft<1>(sides)), hn::ShiftLeft<2>(Load(row + k)));
        const auto code = hn::ShiftRight<fraction>(sum);
        hn::StoreU(hn::DemoteTo(Codes(), hn::Min(hn::Max(code, hn::Zero(d)), hn::Set(d, kGammaCodes - 1))), Codes(),
                   codes + k);
    }
}

constexpr auto& LocalCodes16 = LocalCodesOf<int16_t>;
constexpr auto& LocalCodes32 = LocalCodesOf<int32_t>;

template <int kRadius>
void FilterSigmaRow(const int32_t* row, const SigmaPass& pass, bool isBorder, const int32_t* thresholds, size_t cells,
                    int32_t* filtered) {
    const Words d;
    const Floats f;
    const int radius = kRadius ? kRadius : pass.radius;
    const auto step = static_cast<ptrdiff_t>(pass.step), rowStep = pass.rowStep * step;
    for (size_t k = 0; k < cells; k += hn::Lanes(d)) {
        const auto centre = Load(row + k), threshold = Load(thresholds + k);
        const auto end = hn::Add(threshold, hn::Set(d, 1));
        auto sum = hn::Zero(d), count = hn::Zero(d);  // the count is negative: a true lane is -1
        for (ptrdiff_t i = -radius; i <= radius; ++i)
            for (ptrdiff_t j = -radius; j <= radius; ++j) {
                const auto difference = hn::Sub(Load(row + k + i * rowStep + j * step), centre);
                const auto counts = hn::VecFromMask(d, hn::Lt(hn::Abs(difference), end));
                sum = hn::Add(sum, hn::And(hn::ShiftRight<kSigmaSumShift>(difference), counts));
                count = hn::Add(count, counts);
            }
        const auto mean = hn::Div(hn::ConvertTo(f, sum), hn::ConvertTo(f, hn::Neg(count)));
        auto result = hn::Add(centre, hn::ShiftLeft<kSigmaSumShift>(hn::ConvertTo(d, mean)));
        if (!isBorder) {
            const auto up = Load(row + k - rowStep), down = Load(row + k + rowStep);
            const auto left = Load(row + k - step), right = Load(row + k + step);
            const auto least = hn::Min(hn::Min(up, down), hn::Min(left, right));
            const auto most = hn::Max(hn::Max(up, down), hn::Max(left, right));
            const auto isAlone = hn::Eq(count, hn::Set(d, -1));
            result = hn::IfThenElse(isAlone, hn::Min(hn::Max(centre, least), most), result);
        }
        result = hn::IfThenElse(hn::Gt(threshold, hn::Zero(d)), result, centre);
        hn::StoreU(result, d, filtered + k);
    }
}

constexpr auto& FilterSigma1 = FilterSigmaRow<1>;
constexpr auto& FilterSigma2 = FilterSigmaRow<2>;
constexpr auto& FilterSigmaAny = FilterSigmaRow<0>;

}  // namespace
}  // namespace kvx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx {
namespace {

HWY_EXPORT(SumCells);
HWY_EXPORT(FilterImpulsesInside);
HWY_EXPORT(AddLowColour);
HWY_EXPORT(LocalCodes16);
HWY_EXPORT(LocalCodes32);
HWY_EXPORT(FilterSigma1);
HWY_EXPORT(FilterSigma2);
HWY_EXPORT(FilterSigmaAny);

/** A difference that lacks neighbours at one side or both. */
int16_t FilteredImpulse(const std::array<const int16_t*, 3>& rows, ptrdiff_t cells, ptrdiff_t k) {
    int16_t least = INT16_MAX, most = INT16_MIN;
    for (const int16_t* row : rows) {
        if (!row) continue;
        for (const ptrdiff_t by : {-2, 0, 2}) {
            const bool isCentre = row == rows[1] && by == 0;
            if (isCentre || k + by < 0 || k + by >= cells) continue;
            least = std::min(least, row[k + by]);
            most = std::max(most, row[k + by]);
        }
    }
    return least > most ? rows[1][k] : std::clamp(rows[1][k], least, most);
}

int16_t OwnCode(int32_t value) {
    return static_cast<int16_t>(CodeOf(value));
}
int16_t OwnCode(int16_t value) {
    return value;
}

/** Values at the border stand for themselves. */
template <class Value>
void SetOwnCodes(const Value* row, size_t begin, size_t end, int16_t* codes) {
    for (size_t k = begin; k < end; ++k) codes[k] = OwnCode(row[k]);
}

template <class Value>
void SetBorderCodes(const Value* row, ptrdiff_t rowStep, size_t step, size_t cells, int16_t* codes) {
    if (rowStep == 0 || cells <= 2 * step) {
        SetOwnCodes(row, 0, cells, codes);
        return;
    }
    SetOwnCodes(row, 0, step, codes);
    SetOwnCodes(row, cells - step, cells, codes);
}

/** Values at the sides, which have no four nearest ones to be clamped to. */
int32_t FilteredAtSide(const int32_t* at, const SigmaPass& pass, int32_t threshold) {
    if (threshold <= 0) return *at;
    const auto step = static_cast<ptrdiff_t>(pass.step);
    int32_t sum = 0, count = 0;
    for (ptrdiff_t i = -pass.radius; i <= pass.radius; ++i)
        for (ptrdiff_t j = -pass.radius; j <= pass.radius; ++j) {
            const int32_t difference = at[(i * pass.rowStep + j) * step] - *at;
            if (std::abs(difference) > threshold) continue;
            sum += difference >> kSigmaSumShift;
            ++count;
        }
    return SigmaMean(*at, sum, count);
}

}  // namespace

void GenerateLowRow(const CellPan& pan, const int16_t* colour, size_t cells, int32_t* lowPan,
                    int16_t* difference) noexcept {
    HWY_DYNAMIC_DISPATCH(SumCells)(pan, cells, lowPan);
    const auto linear = [](int16_t code) { return Gamma10toLinear12[code]; };
    for (size_t k = 0; k < cells; ++k) {
        const int32_t mean = CodeOfMean(linear(pan.upperAtColour[k]), linear(pan.lowerAtColour[k]));
        difference[k] = static_cast<int16_t>(colour[k] - mean);
    }
}

void FilterImpulses(const std::array<const int16_t*, 3>& rows, size_t cells, int16_t* filtered) noexcept {
    HWY_DYNAMIC_DISPATCH(FilterImpulsesInside)(rows, cells, filtered);
    const auto count = static_cast<ptrdiff_t>(cells);
    for (ptrdiff_t k = 0; k < std::min<ptrdiff_t>(2, count); ++k) filtered[k] = FilteredImpulse(rows, count, k);
    for (ptrdiff_t k = std::max<ptrdiff_t>(count - 2, 0); k < count; ++k) filtered[k] = FilteredImpulse(rows, count, k);
}

void GenerateLowColour(const int32_t* lowPan, const int16_t* difference, size_t cells, int16_t* lowColour,
                       int32_t* lowColorDiff) noexcept {
    HWY_DYNAMIC_DISPATCH(AddLowColour)(lowPan, difference, cells, lowColour, lowColorDiff);
}

void LocalCodes(const int32_t* row, ptrdiff_t rowStep, size_t step, size_t cells, int16_t* codes) noexcept {
    if (rowStep != 0) HWY_DYNAMIC_DISPATCH(LocalCodes32)(row, rowStep, step, cells, codes);
    SetBorderCodes(row, rowStep, step, cells, codes);
}

void LocalCodes(const int16_t* row, ptrdiff_t rowStep, size_t step, size_t cells, int16_t* codes) noexcept {
    if (rowStep != 0) HWY_DYNAMIC_DISPATCH(LocalCodes16)(row, rowStep, step, cells, codes);
    SetBorderCodes(row, rowStep, step, cells, codes);
}

void FilterSigma(const int32_t* row, const SigmaPass& pass, bool isBorder, const int32_t* thresholds, size_t cells,
                 int32_t* filtered) noexcept {
    if (pass.radius == 1)
        HWY_DYNAMIC_DISPATCH(FilterSigma1)(row, pass, isBorder, thresholds, cells, filtered);
    else if (pass.radius == 2)
        HWY_DYNAMIC_DISPATCH(FilterSigma2)(row, pass, isBorder, thresholds, cells, filtered);
    else
        HWY_DYNAMIC_DISPATCH(FilterSigmaAny)(row, pass, isBorder, thresholds, cells, filtered);
    if (!isBorder) {
        for (size_t k = 0; k < std::min(pass.step, cells); ++k)
            filtered[k] = FilteredAtSide(row + k, pass, thresholds[k]);
        for (size_t k = std::max(cells, pass.step) - pass.step; k < cells; ++k)
            filtered[k] = FilteredAtSide(row + k, pass, thresholds[k]);
    }
    std::fill_n(filtered + cells, PaddedPlane<int32_t>::kReach, kOutside);  // where vectors have written
}

}  // namespace kvx
#endif
