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

/** Sums over the five columns around each site. */
void SumColumns(const PairRow& values, int lanes, const PairRow& sums) {
    for (int i = 0; i < lanes; i += kStep) {
        const Vec even = Load(values.even + i), odd = Load(values.odd + i);
        const Vec evenBefore = Load(values.even + i - 1), oddBefore = Load(values.odd + i - 1);
        const Vec evenAfter = Load(values.even + i + 1), oddAfter = Load(values.odd + i + 1);
        Store(((evenBefore + evenAfter) + (oddBefore + odd)) + even, sums.even + i);
        Store(((oddBefore + oddAfter) + (even + evenAfter)) + odd, sums.odd + i);
    }
}

void SumMeasures(const Activity& measures, int lanes, const Activity& sums) {
    SumColumns(measures.gradient, lanes, sums.gradient);
    SumColumns(measures.change, lanes, sums.change);
    SumColumns(measures.noise, lanes, sums.noise);
}

void SmoothRow(const PairRow vertical[5], int lanes, const PairRow& smooth) {
    for (int i = 0; i < lanes; i += kStep) {
        Store(Smooth(Load(vertical[0].even + i), Load(vertical[1].even + i), Load(vertical[2].even + i),
                     Load(vertical[3].even + i), Load(vertical[4].even + i)),
              smooth.even + i);
        Store(Smooth(Load(vertical[0].odd + i), Load(vertical[1].odd + i), Load(vertical[2].odd + i),
                     Load(vertical[3].odd + i), Load(vertical[4].odd + i)),
              smooth.odd + i);
    }
}

void HorizontalActivityRow(const PairRow& d, int lanes, const ActivityScratch& scratch, const Activity& sums) {
    const Activity& measures = scratch.measures;
    for (int i = 0; i < lanes; i += kStep) {
        const Vec even = Load(d.even + i), odd = Load(d.odd + i);
        const Vec evenBefore = Load(d.even + i - 1), oddBefore = Load(d.odd + i - 1);
        const Vec evenAfter = Load(d.even + i + 1), oddAfter = Load(d.odd + i + 1);
        const Vec smoothEven = Smooth(evenBefore, oddBefore, even, odd, evenAfter);
        const Vec smoothOdd = Smooth(oddBefore, even, odd, evenAfter, oddAfter);
        Store(smoothEven, scratch.smooth.even + i);
        Store(smoothOdd, scratch.smooth.odd + i);
        Store(Distance(odd, oddBefore), measures.gradient.even + i);
        Store(Distance(evenAfter, even), measures.gradient.odd + i);
        Store(Noise(even, smoothEven), measures.noise.even + i);
        Store(Noise(odd, smoothOdd), measures.noise.odd + i);
    }
    const PairRow& smooth = scratch.smooth;
    for (int i = 0; i < lanes; i += kStep) {
        Store(Squared(Load(smooth.even + i + 1) - Load(smooth.even + i - 1)), measures.change.even + i);
        Store(Squared(Load(smooth.odd + i + 1) - Load(smooth.odd + i - 1)), measures.change.odd + i);
    }
    SumMeasures(measures, lanes, sums);
}

void VerticalMeasures(const float* const d[3], const float* const smooth[3], int lanes, float* gradient, float* change,
                      float* noise) {
    for (int i = 0; i < lanes; i += kStep) {
        Store(Distance(Load(d[2] + i), Load(d[0] + i)), gradient + i);
        Store(Squared(Load(smooth[2] + i) - Load(smooth[0] + i)), change + i);
        Store(Noise(Load(d[1] + i), Load(smooth[1] + i)), noise + i);
    }
}

void VerticalActivityRow(const PairRow d[3], const PairRow smooth[3], int lanes, const ActivityScratch& scratch,
                         const Activity& sums) {
    const Activity& measures = scratch.measures;
    const float* const evenDifferences[3] = {d[0].even, d[1].even, d[2].even};
    const float* const evenSmooth[3] = {smooth[0].even, smooth[1].even, smooth[2].even};
    VerticalMeasures(evenDifferences, evenSmooth, lanes, measures.gradient.even, measures.change.even,
                     measures.noise.even);
    const float* const oddDifferences[3] = {d[0].odd, d[1].odd, d[2].odd};
    const float* const oddSmooth[3] = {smooth[0].odd, smooth[1].odd, smooth[2].odd};
    VerticalMeasures(oddDifferences, oddSmooth, lanes, measures.gradient.odd, measures.change.odd, measures.noise.odd);
    SumMeasures(measures, lanes, sums);
}

}  // namespace
}  // namespace kvx::ipp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx::ipp {
HWY_EXPORT(SmoothRow);
HWY_EXPORT(HorizontalActivityRow);
HWY_EXPORT(VerticalActivityRow);

void SmoothRow(const PairRow vertical[5], int lanes, const PairRow& smooth) {
    HWY_DYNAMIC_DISPATCH(SmoothRow)(vertical, lanes, smooth);
}

void HorizontalActivityRow(const PairRow& horizontal, int lanes, const ActivityScratch& scratch, const Activity& sums) {
    HWY_DYNAMIC_DISPATCH(HorizontalActivityRow)(horizontal, lanes, scratch, sums);
}

void VerticalActivityRow(const PairRow differences[3], const PairRow smooth[3], int lanes,
                         const ActivityScratch& scratch, const Activity& sums) {
    HWY_DYNAMIC_DISPATCH(VerticalActivityRow)(differences, smooth, lanes, scratch, sums);
}
}  // namespace kvx::ipp
#endif
