#include "KvxBayer/ipp/DifferenceRow.h"

#include "KvxBayer/ipp/Method.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "KvxBayer/ipp/DifferenceRow.cpp"
#include <hwy/foreach_target.h>  // compiles this file once per instruction set

#include "KvxBayer/ipp/Vectors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::ipp::HWY_NAMESPACE {
namespace {

/** Sites of one kind: their samples in five rows, and those of the sites to their left and right. */
struct Sites {
    const float* column[5];
    const float* west;
    const float* east;
};

/** `sign` is 1 where the site is green, -1 where the estimate is. */
void Differences(const Sites& sites, float sign, int lanes, float* horizontal, float* vertical) {
    const Vec half = Set(0.5f), bend = Set(kBend), signs = Set(sign);
    for (int i = 0; i < lanes; i += kStep) {
        const Vec own = Load(sites.column[2] + i);
        const Vec twice = own + own;
        const auto difference = [&](Vec near, Vec far) { return signs * (own - (half * near + bend * (twice - far))); };
        Store(difference(Load(sites.west + i) + Load(sites.east + i),
                         Load(sites.column[2] + i - 1) + Load(sites.column[2] + i + 1)),
              horizontal + i);
        Store(difference(Load(sites.column[1] + i) + Load(sites.column[3] + i),
                         Load(sites.column[0] + i) + Load(sites.column[4] + i)),
              vertical + i);
    }
}

void DifferenceRow(const PairRow mosaic[5], int phase, int lanes, const PairRow& horizontal, const PairRow& vertical) {
    const PairRow& row = mosaic[2];
    const Sites even{{mosaic[0].even, mosaic[1].even, row.even, mosaic[3].even, mosaic[4].even}, row.odd - 1, row.odd};
    const Sites odd{{mosaic[0].odd, mosaic[1].odd, row.odd, mosaic[3].odd, mosaic[4].odd}, row.even, row.even + 1};
    const float evenSign = phase == 0 ? -1.0f : 1.0f;
    Differences(even, evenSign, lanes, horizontal.even, vertical.even);
    Differences(odd, -evenSign, lanes, horizontal.odd, vertical.odd);
}

}  // namespace
}  // namespace kvx::ipp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx::ipp {
HWY_EXPORT(DifferenceRow);

void DifferenceRow(const PairRow mosaic[5], int phase, int lanes, const PairRow& horizontal, const PairRow& vertical) {
    HWY_DYNAMIC_DISPATCH(DifferenceRow)(mosaic, phase, lanes, horizontal, vertical);
}
}  // namespace kvx::ipp
#endif
