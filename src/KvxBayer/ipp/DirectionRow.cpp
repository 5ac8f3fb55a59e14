#include "KvxBayer/ipp/DirectionRow.h"

#include "KvxBayer/ipp/Method.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "KvxBayer/ipp/DirectionRow.cpp"
#include <hwy/foreach_target.h>  // compiles this file once per instruction set

#include "KvxBayer/ipp/Vectors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::ipp::HWY_NAMESPACE {
namespace {

/** Sums of one measure down the columns: of the rows at even distance, and of the two between them. */
void SumRows(const Activity activity[5], float* Activity::*measure, int lanes, float* even, float* between) {
    const float* const rows[5] = {activity[0].*measure, activity[1].*measure, activity[2].*measure,
                                  activity[3].*measure, activity[4].*measure};
    for (int i = 0; i < lanes; i += kStep) {
        Store((Load(rows[0] + i) + Load(rows[4] + i)) + Load(rows[2] + i), even + i);
        Store(Load(rows[1] + i) + Load(rows[3] + i), between + i);
    }
}

HWY_INLINE Vec WindowSum(const float* even, const float* between) {
    return ((Load(even - 1) + Load(even + 1)) + Load(even)) + (Load(between - 1) + Load(between));
}

void DirectionRow(const Activity activity[5], int phase, int lanes, const Activity& even, const Activity& between,
                  const Direction& direction) {
    SumRows(activity, &Activity::gradient, lanes, even.gradient, between.gradient);
    SumRows(activity, &Activity::change, lanes, even.change, between.change);
    SumRows(activity, &Activity::noise, lanes, even.noise, between.noise);
    const Vec guard = Set(kActivityGuard);
    for (int i = 0; i < lanes; i += kStep) {
        const int east = i + phase;  // lane of the site to the right in the rows between
        Store(Squared(WindowSum(even.gradient + i, between.gradient + east) + guard), direction.cost + i);
        const Vec change = WindowSum(even.change + i, between.change + east);
        const Vec noise = WindowSum(even.noise + i, between.noise + east);
        Store(change / ((change + noise) + guard), direction.local + i);
    }
}

}  // namespace
}  // namespace kvx::ipp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx::ipp {
HWY_EXPORT(DirectionRow);

void DirectionRow(const Activity activity[5], int phase, int lanes, const Activity& even, const Activity& between,
                  const Direction& direction) {
    HWY_DYNAMIC_DISPATCH(DirectionRow)(activity, phase, lanes, even, between, direction);
}
}  // namespace kvx::ipp
#endif
