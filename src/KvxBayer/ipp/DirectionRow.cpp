#include "KvxBayer/ipp/DirectionRow.h"

#include "KvxBayer/ipp/Method.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "KvxBayer/ipp/DirectionRow.cpp"
#include <hwy/foreach_target.h>  // compiles this file once per instruction set

#include "KvxBayer/ipp/Vectors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::ipp::HWY_NAMESPACE {
namespace {

/** One measure's column sums in five rows. */
struct Column {
    const float* rows[5];

    Column(const Activity sums[5], PairRow Activity::*measure, int phase) {
        for (int row = 0; row < 5; ++row) rows[row] = (sums[row].*measure).Colour(phase);
    }
    HWY_INLINE Vec Sum(int i) const {
        return ((Load(rows[0] + i) + Load(rows[4] + i)) + (Load(rows[1] + i) + Load(rows[3] + i))) + Load(rows[2] + i);
    }
};

void DirectionRow(const Activity sums[5], int phase, int lanes, const Direction& direction) {
    const Column gradient(sums, &Activity::gradient, phase);
    const Column change(sums, &Activity::change, phase);
    const Column noise(sums, &Activity::noise, phase);
    const Vec guard = Set(kActivityGuard);
    for (int i = 0; i < lanes; i += kStep) {
        Store(Squared(gradient.Sum(i) + guard), direction.cost + i);
        const Vec changes = change.Sum(i);
        Store(changes / ((changes + noise.Sum(i)) + guard), direction.local + i);
    }
}

}  // namespace
}  // namespace kvx::ipp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx::ipp {
HWY_EXPORT(DirectionRow);

void DirectionRow(const Activity sums[5], int phase, int lanes, const Direction& direction) {
    HWY_DYNAMIC_DISPATCH(DirectionRow)(sums, phase, lanes, direction);
}
}  // namespace kvx::ipp
#endif
