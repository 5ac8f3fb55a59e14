#include "demosaicers/denoising/PanCodeRows.h"

#include "pipeline/PanInterpolation.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "demosaicers/denoising/PanCodeRows.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kvx::HWY_NAMESPACE {
namespace {
namespace hn = hwy::HWY_NAMESPACE;

using Codes = hn::ScalableTag<int16_t>;
using Floats = hn::ScalableTag<float>;
using Words = hn::RebindToSigned<Floats>;
using HalfCodes = hn::Rebind<int16_t, Floats>;

auto ToFloat(hn::Vec<HalfCodes> codes) {
    return hn::ConvertTo(Floats(), hn::PromoteTo(Words(), codes));
}

hn::Vec<HalfCodes> ToCodes(hn::Vec<Floats> values) {
    return hn::DemoteTo(HalfCodes(), hn::ConvertTo(Words(), values));
}

void StoreLevels(const PanWindow& rows, int parity, size_t sites, int16_t* levels) {
    const Codes d;
    const int16_t *centre = rows[3], *up = rows[2] + parity - 1, *down = rows[4] + parity - 1;
    for (size_t k = 0; k < sites; k += hn::Lanes(d)) {
        const auto nearest = hn::Add(hn::Add(hn::LoadU(d, up + k), hn::LoadU(d, up + k + 1)),
                                     hn::Add(hn::LoadU(d, down + k), hn::LoadU(d, down + k + 1)));
        const auto sum = hn::Add(hn::ShiftLeft<2>(hn::LoadU(d, centre + k)), hn::Add(nearest, hn::Set(d, 4)));
        hn::StoreU(hn::ShiftRight<3>(sum), d, levels + k);
    }
}

/** Twelve sites around each one, in the order in which the plain form adds them. */
void FilterRow(const PanWindow& rows, int parity, size_t sites, const float* thresholds, int16_t* filtered) {
    const Floats f;
    const HalfCodes d;
    const int left = parity - 1, right = parity;
    const int16_t* const window[] = {rows[2] + left, rows[2] + right, rows[4] + left, rows[4] + right,
                                     rows[1],        rows[3] - 1,     rows[3] + 1,    rows[5],
                                     rows[1] - 1,    rows[1] + 1,     rows[5] - 1,    rows[5] + 1};
    for (size_t k = 0; k < sites; k += hn::Lanes(f)) {
        const auto centre = hn::LoadU(d, rows[3] + k);
        const auto threshold = hn::LoadU(f, thresholds + k);
        const auto widest = hn::Mul(threshold, threshold);
        auto sum = hn::Zero(f), weights = widest;
        for (const int16_t* neighbour : window) {
            const auto difference = ToFloat(hn::Sub(hn::LoadU(d, neighbour + k), centre));
            const auto weight = hn::Max(hn::Sub(widest, hn::Mul(difference, difference)), hn::Zero(f));
            sum = hn::Add(sum, hn::Mul(weight, difference));
            weights = hn::Add(weights, weight);
        }
        const auto mean = hn::Add(ToFloat(centre), hn::Div(sum, weights));
        hn::StoreU(ToCodes(hn::Add(mean, hn::Set(f, 0.5F))), d, filtered + k);
    }
}

void SumGradientsRow(const int16_t* row, const int16_t* up, const int16_t* down, int parity, size_t sites,
                     const std::array<int16_t*, 2>& scratch, const GradientRow& sums) {
    const Codes d;
    const auto lanes = static_cast<ptrdiff_t>(hn::Lanes(d)), end = static_cast<ptrdiff_t>(sites) + 1;
    const int16_t* left = row - parity;
    for (ptrdiff_t k = -1; k < end; k += lanes) {
        const auto across = hn::Abs(hn::Sub(hn::LoadU(d, left + k), hn::LoadU(d, left + k + 1)));
        hn::StoreU(across, d, scratch[0] + k);
        hn::StoreU(hn::Abs(hn::Sub(hn::LoadU(d, up + k), hn::LoadU(d, down + k))), d, scratch[1] + k);
    }
    // Seen from the rows above and below, the two colour sites next to a column begin one site earlier on even rows.
    const int pair = parity == 0 ? -1 : 0;
    for (ptrdiff_t k = 0; k < static_cast<ptrdiff_t>(sites); k += lanes)
        for (int direction = 0; direction < 2; ++direction) {
            const int16_t* at = scratch[direction] + k;
            const auto before = hn::LoadU(d, at - 1), here = hn::LoadU(d, at), after = hn::LoadU(d, at + 1);
            hn::StoreU(hn::Add(hn::Add(before, here), after), d, (direction ? sums.down3 : sums.across3) + k);
            hn::StoreU(hn::Add(here, pair < 0 ? before : after), d, (direction ? sums.down2 : sums.across2) + k);
        }
}

hn::Vec<Codes> SumOf(const int16_t* const (&rows)[5], size_t k) {
    const Codes d;
    auto sum = hn::LoadU(d, rows[0] + k);
    for (int i = 1; i < 5; ++i) sum = hn::Add(sum, hn::LoadU(d, rows[i] + k));
    return sum;
}

template <class Half>
hn::Vec<HalfCodes> WeightedMean(Half half, hn::Vec<Codes> across, hn::Vec<Codes> down, hn::Vec<Codes> gradientAcross,
                                hn::Vec<Codes> gradientDown) {
    const Floats f;
    const auto a = ToFloat(half(gradientDown)), b = ToFloat(half(gradientAcross));
    const auto weightAcross = hn::Mul(a, a), weightDown = hn::Mul(b, b);
    const auto sum = hn::Add(hn::Mul(ToFloat(half(across)), weightAcross), hn::Mul(ToFloat(half(down)), weightDown));
    const auto mean = hn::Mul(hn::Div(sum, hn::Add(weightAcross, weightDown)), hn::Set(f, 0.0625F));
    const auto code = hn::Add(mean, hn::Set(f, 0.5F));
    return ToCodes(hn::Min(hn::Max(code, hn::Zero(f)), hn::Set(f, 1023.0F)));
}

/** Nine times the near pair minus the far pair. */
hn::Vec<Codes> AlongLineOf(const int16_t* near0, const int16_t* near1, const int16_t* far0, const int16_t* far1) {
    const Codes d;
    const auto near = hn::Add(hn::LoadU(d, near0), hn::LoadU(d, near1));
    return hn::Sub(hn::Add(hn::ShiftLeft<3>(near), near), hn::Add(hn::LoadU(d, far0), hn::LoadU(d, far1)));
}

void InterpolateRow(const PanWindow& rows, const std::array<GradientRow, 5>& gradients, int parity, size_t sites,
                    int16_t* panAtColour) {
    const Codes d;
    const int16_t* left = rows[3] - parity;
    const int16_t* const across[] = {gradients[0].across3, gradients[1].across2, gradients[2].across3,
                                     gradients[3].across2, gradients[4].across3};
    const int16_t* const down[] = {gradients[0].down3, gradients[1].down2, gradients[2].down3, gradients[3].down2,
                                   gradients[4].down3};
    const auto guard = hn::Set(d, kGradientGuard);
    for (size_t k = 0; k < sites; k += hn::Lanes(d)) {
        const auto gradientAcross = hn::Add(SumOf(across, k), guard), gradientDown = hn::Add(SumOf(down, k), guard);
        const auto alongRow = AlongLineOf(left + k, left + k + 1, left + k - 1, left + k + 2);
        const auto alongColumn = AlongLineOf(rows[2] + k, rows[4] + k, rows[0] + k, rows[6] + k);
        const auto lower = [](hn::Vec<Codes> v) { return hn::LowerHalf(HalfCodes(), v); };
        const auto upper = [](hn::Vec<Codes> v) { return hn::UpperHalf(HalfCodes(), v); };
        const HalfCodes half;
        hn::StoreU(WeightedMean(lower, alongRow, alongColumn, gradientAcross, gradientDown), half, panAtColour + k);
        hn::StoreU(WeightedMean(upper, alongRow, alongColumn, gradientAcross, gradientDown), half,
                   panAtColour + k + hn::Lanes(half));
    }
}

void MergeRow(const int16_t* even, const int16_t* odd, size_t sites, int16_t* columns) {
    const Codes d;
    for (size_t k = 0; k < sites; k += hn::Lanes(d))
        hn::StoreInterleaved2(hn::LoadU(d, even + k), hn::LoadU(d, odd + k), d, columns + 2 * k);
}

}  // namespace
}  // namespace kvx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx {

HWY_EXPORT(StoreLevels);
HWY_EXPORT(FilterRow);
HWY_EXPORT(SumGradientsRow);
HWY_EXPORT(InterpolateRow);
HWY_EXPORT(MergeRow);

void MirrorPanRow(int16_t* row, int parity, int sites) noexcept {
    const auto mirrored = [=](int site) { return MirroredIndex(2 * site + parity, 2 * sites) / 2; };
    for (int i = 1; i <= kPanMargin; ++i) {
        row[-i] = row[mirrored(-i)];
        row[sites - 1 + i] = row[mirrored(sites - 1 + i)];
    }
}

void FilterPanRow(const PanWindow& rows, int parity, size_t sites, const PanThresholds& thresholds, float* scratch,
                  int16_t* filtered) noexcept {
    HWY_DYNAMIC_DISPATCH(StoreLevels)(rows, parity, sites, filtered);
    for (size_t k = 0; k < sites; ++k) scratch[k] = thresholds[filtered[k]];
    HWY_DYNAMIC_DISPATCH(FilterRow)(rows, parity, sites, scratch, filtered);
}

void SumGradients(const int16_t* row, const int16_t* up, const int16_t* down, int parity, size_t sites,
                  const std::array<int16_t*, 2>& scratch, const GradientRow& sums) noexcept {
    HWY_DYNAMIC_DISPATCH(SumGradientsRow)(row, up, down, parity, sites, scratch, sums);
}

void InterpolatePanRow(const PanWindow& rows, const std::array<GradientRow, 5>& gradients, int parity, size_t sites,
                       int16_t* panAtColour) noexcept {
    HWY_DYNAMIC_DISPATCH(InterpolateRow)(rows, gradients, parity, sites, panAtColour);
}

void MergePanRow(const int16_t* pan, const int16_t* panAtColour, int parity, size_t sites, int16_t* columns) noexcept {
    HWY_DYNAMIC_DISPATCH(MergeRow)
    (parity == 0 ? pan : panAtColour, parity == 0 ? panAtColour : pan, sites, columns);
}

}  // namespace kvx
#endif
