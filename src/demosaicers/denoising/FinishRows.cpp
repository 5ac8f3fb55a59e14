#include "demosaicers/denoising/FinishRows.h"

#include <algorithm>

#include "pipeline/GammaCodes.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "demosaicers/denoising/FinishRows.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kvx::HWY_NAMESPACE {
namespace {
namespace hn = hwy::HWY_NAMESPACE;

using Words = hn::ScalableTag<int32_t>;
using Floats = hn::RebindToFloat<Words>;
using Codes = hn::Rebind<int16_t, Words>;
using Values = hn::Rebind<uint16_t, Words>;

hn::Vec<Words> Load(const uint16_t* from) {
    return hn::PromoteTo(Words(), hn::LoadU(Values(), from));
}
hn::Vec<Floats> LoadFloat(const uint16_t* from) {
    return hn::ConvertTo(Floats(), Load(from));
}

/** The same bits as convolving whole planes in single precision. */
template <bool kBorder>
hn::Vec<Words> SmoothedDown(const DoubledRows& rows, size_t k) {
    const Floats f;
    const auto here = hn::LoadU(f, rows.here + k);
    if (kBorder) return hn::ConvertTo(Words(), here);
    const auto quarter = hn::Set(f, 0.25F);
    const auto first = hn::Add(hn::Mul(hn::LoadU(f, rows.before + k), quarter), hn::Mul(here, hn::Set(f, 0.5F)));
    return hn::ConvertTo(Words(), hn::Add(first, hn::Mul(hn::LoadU(f, rows.after + k), quarter)));
}

void StoreCodes(hn::Vec<Words> values, int16_t* codes) {
    const Words d;
    const auto code = hn::ShiftRight<kFractionBits>(values);  // negative values become 0 either way
    hn::StoreU(hn::DemoteTo(Codes(), hn::Min(hn::Max(code, hn::Zero(d)), hn::Set(d, kGammaCodes - 1))), Codes(), codes);
}

template <bool kBorder>
void LowPan(const DoubledRows& lowPan, size_t width, int32_t* values, int16_t* codes) {
    const Words d;
    for (size_t k = 0; k < width; k += hn::Lanes(d)) {
        const auto value = SmoothedDown<kBorder>(lowPan, k);
        hn::StoreU(value, d, values + k);
        StoreCodes(value, codes + k);
    }
}

void LowPanRow(const DoubledRows& lowPan, size_t width, int32_t* values, int16_t* codes) {
    (lowPan.isBorder ? LowPan<true> : LowPan<false>)(lowPan, width, values, codes);
}

template <bool kBorder>
void Colour(const int32_t* lowPan, const DoubledRows& difference, size_t width, int16_t* codes) {
    const Words d;
    for (size_t k = 0; k < width; k += hn::Lanes(d))
        StoreCodes(hn::Add(hn::LoadU(d, lowPan + k), SmoothedDown<kBorder>(difference, k)), codes + k);
}

void ColourRow(const int32_t* lowPan, const DoubledRows& difference, size_t width, int16_t* codes) {
    (difference.isBorder ? Colour<true> : Colour<false>)(lowPan, difference, width, codes);
}

/** Truncated and clamped; not a number gives 0. */
hn::Vec<Words> Clamped(hn::Vec<Floats> value, float white) {
    const Floats f;
    const auto inside = hn::Min(value, hn::Set(f, white));
    return hn::ConvertTo(Words(), hn::IfThenElseZero(hn::Ge(value, hn::Zero(f)), inside));
}

void CorrectRow(const std::array<const uint16_t*, 3>& linear, const float* matrix, size_t width,
                const std::array<uint16_t*, 3>& corrected) {
    const Floats f;
    for (size_t k = 0; k < width; k += hn::Lanes(f)) {
        const auto red = LoadFloat(linear[0] + k), green = LoadFloat(linear[1] + k), blue = LoadFloat(linear[2] + k);
        for (int channel = 0; channel < 3; ++channel) {
            const float* row = matrix + ptrdiff_t{3} * channel;
            const auto sum = hn::Add(hn::Add(hn::Mul(hn::Set(f, row[0]), red), hn::Mul(hn::Set(f, row[1]), green)),
                                     hn::Mul(hn::Set(f, row[2]), blue));
            hn::StoreU(hn::DemoteTo(Values(), Clamped(sum, 4095.0F)), Values(), corrected[channel] + k);
        }
    }
}

void AcrossRow(const uint16_t* display, size_t width, uint16_t* sums) {
    const hn::ScalableTag<uint16_t> d;
    for (size_t k = 2; k + 2 < width; k += hn::Lanes(d)) {
        const auto sides = hn::Add(hn::LoadU(d, display + k - 2), hn::LoadU(d, display + k + 2));
        hn::StoreU(hn::Add(sides, hn::ShiftLeft<1>(hn::LoadU(d, display + k))), d, sums + k);
    }
}

void DownRow(const SharpnessRow& row, size_t width, uint16_t* levels) {
    const hn::ScalableTag<uint16_t> d;
    for (size_t k = 0; k < width; k += hn::Lanes(d)) {
        auto sum = hn::LoadU(d, row.smooth + k);
        if (row.smoothUp && row.smoothDown) {
            const auto sides = hn::Add(hn::LoadU(d, row.smoothUp + k), hn::LoadU(d, row.smoothDown + k));
            sum = hn::ShiftRight<2>(hn::Add(sides, hn::ShiftLeft<1>(sum)));
        }
        hn::StoreU(hn::ShiftRight<2>(sum), d, levels + k);
    }
}

/** Detail with this activity. */
hn::Vec<Floats> Detail(const SharpnessRow& row, const uint16_t* levels, const float* edgeScale, const float* noiseGain,
                       float maxSharpen, hn::Vec<Words> activity, size_t k) {
    const Floats f;
    const auto zero = hn::Zero(f), most = hn::Set(f, maxSharpen);
    const auto low = Load(row.low + k);
    auto strength = hn::ConvertTo(f, activity);
    if (row.isDeep) strength = hn::Mul(strength, hn::Set(f, 0.0625F));
    const auto ratio = hn::Sub(hn::Div(strength, hn::LoadU(f, edgeScale + k)), hn::Set(f, 1.0F));
    const auto positive = hn::IfThenElse(hn::Gt(zero, ratio), zero, ratio);
    const auto amount = hn::IfThenElse(hn::Lt(positive, most), positive, most);
    const auto sharpening = hn::Mul(hn::ConvertTo(f, hn::Sub(low, Load(levels + k))), amount);
    const auto detail = hn::ConvertTo(f, hn::Sub(Load(row.pan + k), low));
    return hn::Add(hn::Mul(detail, hn::LoadU(f, noiseGain + k)), sharpening);
}

void DetailRow(const SharpnessRow& row, const uint16_t* levels, const float* edgeScale, const float* noiseGain,
               float maxSharpen, size_t width, float* detail) {
    const Floats f;
    for (size_t k = 0; k < width; k += hn::Lanes(f)) {
        auto activity = hn::ShiftLeft<1>(Load(row.low + k));  // what the border has
        if (row.lowUp && row.lowDown) {
            const auto cross = hn::Sub(hn::Add(Load(row.lowUp + k), Load(row.lowDown + k)),
                                       hn::Add(Load(row.low + k - 1), Load(row.low + k + 1)));
            const auto diagonal = hn::Sub(hn::Add(Load(row.lowUp + k - 1), Load(row.lowDown + k + 1)),
                                          hn::Add(Load(row.lowUp + k + 1), Load(row.lowDown + k - 1)));
            activity = hn::Add(hn::Abs(cross), hn::Abs(diagonal));
        }
        hn::StoreU(Detail(row, levels, edgeScale, noiseGain, maxSharpen, activity, k), f, detail + k);
    }
}

void PlainDetailRow(const uint16_t* pan, const uint16_t* low, const float* noiseGain, size_t width, float* detail) {
    const Floats f;
    for (size_t k = 0; k < width; k += hn::Lanes(f)) {
        const auto fine = hn::ConvertTo(f, hn::Sub(Load(pan + k), Load(low + k)));
        hn::StoreU(hn::Mul(fine, hn::LoadU(f, noiseGain + k)), f, detail + k);
    }
}

/** One pixel at either side, whose activity is that of the border. */
void DetailAtSide(const SharpnessRow& row, const uint16_t* levels, const float* edgeScale, const float* noiseGain,
                  float maxSharpen, size_t k, float* detail) {
    const auto activity = hn::ShiftLeft<1>(Load(row.low + k));
    detail[k] = hn::GetLane(Detail(row, levels, edgeScale, noiseGain, maxSharpen, activity, k));
}

void AddRow(const float* detail, uint16_t white, size_t width, uint16_t* colour) {
    const Floats f;
    for (size_t k = 0; k < width; k += hn::Lanes(f)) {
        const auto sum = hn::Add(LoadFloat(colour + k), hn::LoadU(f, detail + k));
        hn::StoreU(hn::DemoteTo(Values(), Clamped(sum, white)), Values(), colour + k);
    }
}

}  // namespace
}  // namespace kvx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx {

HWY_EXPORT(LowPanRow);
HWY_EXPORT(ColourRow);
HWY_EXPORT(CorrectRow);
HWY_EXPORT(AcrossRow);
HWY_EXPORT(DownRow);
HWY_EXPORT(DetailRow);
HWY_EXPORT(DetailAtSide);
HWY_EXPORT(PlainDetailRow);
HWY_EXPORT(AddRow);

void FinishLowPan(const DoubledRows& lowPan, size_t width, int32_t* values, int16_t* codes) noexcept {
    HWY_DYNAMIC_DISPATCH(LowPanRow)(lowPan, width, values, codes);
}

void FinishColour(const int32_t* lowPan, const DoubledRows& difference, size_t width, int16_t* codes) noexcept {
    HWY_DYNAMIC_DISPATCH(ColourRow)(lowPan, difference, width, codes);
}

void CorrectColour(const std::array<const uint16_t*, 3>& linear, const float* matrix, size_t width,
                   const std::array<uint16_t*, 3>& corrected) noexcept {
    HWY_DYNAMIC_DISPATCH(CorrectRow)(linear, matrix, width, corrected);
}

void SmoothAcross(const uint16_t* display, size_t width, uint16_t* sums) noexcept {
    HWY_DYNAMIC_DISPATCH(AcrossRow)(display, width, sums);
    for (const size_t k : {size_t{0}, size_t{1}, width - 2, width - 1}) sums[k] = static_cast<uint16_t>(4 * display[k]);
}

void SmoothDown(const SharpnessRow& row, size_t width, uint16_t* levels) noexcept {
    HWY_DYNAMIC_DISPATCH(DownRow)(row, width, levels);
}

void FindDetail(const SharpnessRow& row, const uint16_t* levels, const float* edgeScale, const float* noiseGain,
                float maxSharpen, size_t width, float* detail) noexcept {
    HWY_DYNAMIC_DISPATCH(DetailRow)(row, levels, edgeScale, noiseGain, maxSharpen, width, detail);
    for (const size_t k : {size_t{0}, width - 1})
        HWY_DYNAMIC_DISPATCH(DetailAtSide)(row, levels, edgeScale, noiseGain, maxSharpen, k, detail);
}

void FindPlainDetail(const uint16_t* pan, const uint16_t* low, const float* noiseGain, size_t width,
                     float* detail) noexcept {
    HWY_DYNAMIC_DISPATCH(PlainDetailRow)(pan, low, noiseGain, width, detail);
}

void AddDetail(const float* detail, uint16_t white, size_t width, uint16_t* colour) noexcept {
    HWY_DYNAMIC_DISPATCH(AddRow)(detail, white, width, colour);
}

}  // namespace kvx
#endif
