#include "demosaicers/denoising/UpSampleRows.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "demosaicers/denoising/UpSampleRows.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kvx::HWY_NAMESPACE {
namespace {
namespace hn = hwy::HWY_NAMESPACE;

// All sums and quotients are exact: differences are multiples of 256, of which at most 18 bits differ from zero.
using Words = hn::ScalableTag<int32_t>;

void AcrossRow(const int32_t* difference, int firstCell, size_t cells, int32_t* sums) {
    const Words d;
    const auto isEven = hn::Eq(hn::And(hn::Iota(d, 0), hn::Set(d, 1)), hn::Zero(d));
    for (size_t k = 0; k < cells; k += hn::Lanes(d)) {
        const auto own = hn::ShiftLeft<1>(hn::LoadU(d, difference + k));
        const auto sides = hn::Add(hn::LoadU(d, difference + k - 1), hn::LoadU(d, difference + k + 1));
        hn::StoreU(firstCell == 0 ? hn::IfThenElse(isEven, own, sides) : hn::IfThenElse(isEven, sides, own), d,
                   sums + k);
    }
}

template <int kShift>
void DownRow(const int32_t* up, const int32_t* row, const int32_t* down, size_t cells, int32_t* spread) {
    const Words d;
    for (size_t k = 0; k < cells; k += hn::Lanes(d)) {
        auto sum = hn::LoadU(d, row + k);
        if (up && down) sum = hn::Add(hn::Add(hn::LoadU(d, up + k), hn::LoadU(d, down + k)), hn::ShiftLeft<1>(sum));
        hn::StoreU(hn::ShiftRight<kShift>(sum), d, spread + k);
    }
}

constexpr auto& DownRow4 = DownRow<2>;
constexpr auto& DownRow8 = DownRow<3>;

void DoubleRow(const int32_t* row, size_t cells, float* doubled) {
    const Words d;
    const hn::RebindToFloat<Words> f;
    for (size_t k = 0; k < cells; k += hn::Lanes(d)) {
        const auto here = hn::LoadU(d, row + k);
        const auto thrice = hn::Add(hn::ShiftLeft<1>(here), here);
        const auto even = hn::ShiftRight<2>(hn::Add(thrice, hn::LoadU(d, row + k - 1)));
        const auto odd = hn::ShiftRight<2>(hn::Add(thrice, hn::LoadU(d, row + k + 1)));
        hn::StoreInterleaved2(hn::ConvertTo(f, even), hn::ConvertTo(f, odd), f, doubled + 2 * k);
    }
}

}  // namespace
}  // namespace kvx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx {

HWY_EXPORT(AcrossRow);
HWY_EXPORT(DownRow4);
HWY_EXPORT(DownRow8);
HWY_EXPORT(DoubleRow);

void SpreadAcross(const int32_t* difference, int firstCell, size_t cells, int32_t* sums) noexcept {
    HWY_DYNAMIC_DISPATCH(AcrossRow)(difference, firstCell, cells, sums);
    const auto own = [=](size_t k) { return k % 2 == static_cast<size_t>(firstCell) ? difference[k] : 0; };
    sums[0] = own(0);
    sums[cells - 1] = own(cells - 1);
}

void SpreadDown(const int32_t* up, const int32_t* row, const int32_t* down, bool isGreen, size_t cells,
                int32_t* spread) noexcept {
    if (isGreen)
        HWY_DYNAMIC_DISPATCH(DownRow8)(up, row, down, cells, spread);
    else
        HWY_DYNAMIC_DISPATCH(DownRow4)(up, row, down, cells, spread);
}

void CalculateConvolveSimple1D(const int32_t* row, size_t cells, float* doubled) noexcept {
    HWY_DYNAMIC_DISPATCH(DoubleRow)(row, cells, doubled);
    doubled[0] = static_cast<float>(row[0]);
    doubled[2 * cells - 1] = static_cast<float>(row[cells - 1]);
}

}  // namespace kvx
#endif
