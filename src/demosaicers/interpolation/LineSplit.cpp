#include "demosaicers/interpolation/LineSplit.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "demosaicers/interpolation/LineSplit.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kvx::HWY_NAMESPACE {
namespace {
namespace hn = hwy::HWY_NAMESPACE;

void Split16(const int16_t* line, size_t pairs, int16_t* even, int16_t* odd) {
    const hn::ScalableTag<int16_t> d;
    for (size_t j = 0; j < pairs; j += hn::Lanes(d)) {
        hn::Vec<decltype(d)> e, o;
        hn::LoadInterleaved2(d, line + 2 * j, e, o);
        hn::StoreU(e, d, even + j);
        hn::StoreU(o, d, odd + j);
    }
}

void Split32(const int16_t* line, size_t pairs, int32_t* even, int32_t* odd) {
    const hn::ScalableTag<int32_t> d;
    const hn::Repartition<int16_t, decltype(d)> columns;
    for (size_t j = 0; j < pairs; j += hn::Lanes(d)) {
        const auto both = hn::BitCast(d, hn::LoadU(columns, line + 2 * j));
        hn::StoreU(hn::ShiftRight<16>(hn::ShiftLeft<16>(both)), d, even + j);
        hn::StoreU(hn::ShiftRight<16>(both), d, odd + j);
    }
}

}  // namespace
}  // namespace kvx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx {

HWY_EXPORT(Split16);
HWY_EXPORT(Split32);

void SplitLine(const int16_t* line, size_t pairs, int16_t* even, int16_t* odd) {
    HWY_DYNAMIC_DISPATCH(Split16)(line, pairs, even, odd);
}
void SplitLine(const int16_t* line, size_t pairs, int32_t* even, int32_t* odd) {
    HWY_DYNAMIC_DISPATCH(Split32)(line, pairs, even, odd);
}

}  // namespace kvx
#endif
