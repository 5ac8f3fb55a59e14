#include "KvxBayer/ipp/ActivityRow.h"

#include "KvxBayer/ipp/Method.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "KvxBayer/ipp/ActivityRow.cpp"
#include <hwy/foreach_target.h>  // compiles this file once per instruction set

#include "KvxBayer/ipp/Vectors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::ipp::HWY_NAMESPACE {
namespace {

HWY_INLINE Vec Smooth(Vec before2, Vec before1, Vec own, Vec after1, Vec after2) {
    const Vec inner = (before1 + after1) + own;
    return ((before2 + after2) + (inner + inner)) * Set(0.125f);
}

HWY_INLINE Vec Noise(Vec difference, Vec smooth) {
    return Squared(difference - smooth) * Set(kNoiseShare);
}

void HorizontalActivityRow(const PairRow& differences, int phase, int lanes, float* smooth, const Activity& activity) {
    const float* own = differences.Colour(phase);
    const float* west = differences.Green(phase) + phase - 1;  // of the site to the left
    const float* east = west + 1;
    for (int i = 0; i < lanes; i += kStep) {
        const Vec before = Load(west + i), here = Load(own + i), after = Load(east + i);
        const Vec mean = Smooth(Load(own + i - 1), before, here, after, Load(own + i + 1));
        Store(mean, smooth + i);
        Store(Distance(after, before), activity.gradient + i);
        Store(Noise(here, mean), activity.noise + i);
    }
    for (int i = 0; i < lanes; i += kStep)
        Store(Squared(Load(smooth + i + 1) - Load(smooth + i - 1)), activity.change + i);
}

void SmoothRow(const PairRow differences[5], int phase, int lanes, float* smooth) {
    // A column's sites are colour sites in every second row.
    const float* const column[5] = {differences[0].Colour(phase), differences[1].Colour(phase),
                                    differences[2].Colour(phase), differences[3].Colour(phase),
                                    differences[4].Colour(phase)};
    for (int i = 0; i < lanes; i += kStep)
        Store(Smooth(Load(column[0] + i), Load(column[1] + i), Load(column[2] + i), Load(column[3] + i),
                     Load(column[4] + i)),
              smooth + i);
}

void VerticalActivityRow(const PairRow differences[3], const float* const smooth[3], int phase, int lanes,
                         const Activity& activity) {
    const float* above = differences[0].Colour(phase);
    const float* own = differences[1].Colour(phase);
    const float* below = differences[2].Colour(phase);
    for (int i = 0; i < lanes; i += kStep) {
        Store(Distance(Load(below + i), Load(above + i)), activity.gradient + i);
        Store(Squared(Load(smooth[2] + i) - Load(smooth[0] + i)), activity.change + i);
        Store(Noise(Load(own + i), Load(smooth[1] + i)), activity.noise + i);
    }
}

}  // namespace
}  // namespace kvx::ipp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx::ipp {
HWY_EXPORT(HorizontalActivityRow);
HWY_EXPORT(SmoothRow);
HWY_EXPORT(VerticalActivityRow);

void HorizontalActivityRow(const PairRow& differences, int phase, int lanes, float* smooth, const Activity& activity) {
    HWY_DYNAMIC_DISPATCH(HorizontalActivityRow)(differences, phase, lanes, smooth, activity);
}

void SmoothRow(const PairRow differences[5], int phase, int lanes, float* smooth) {
    HWY_DYNAMIC_DISPATCH(SmoothRow)(differences, phase, lanes, smooth);
}

void VerticalActivityRow(const PairRow differences[3], const float* const smooth[3], int phase, int lanes,
                         const Activity& activity) {
    HWY_DYNAMIC_DISPATCH(VerticalActivityRow)(differences, smooth, phase, lanes, activity);
}
}  // namespace kvx::ipp
#endif
