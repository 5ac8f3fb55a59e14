#include "KvxBayer/ipp/GreenRow.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "KvxBayer/ipp/GreenRow.cpp"
#include <hwy/foreach_target.h>  // compiles this file once per instruction set

#include "KvxBayer/ipp/Weights-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::ipp::HWY_NAMESPACE {
namespace {

/** Mean of the two nearest of five sites of a half line, of all five, or between them by `local`. */
HWY_INLINE Vec HalfLine(Vec own, Vec at1, Vec at2, Vec at3, Vec at4, Vec local) {
    const Vec near = own + at1;
    const Vec longMean = (near + (at2 + (at3 + at4))) * Set(0.2f);
    return longMean + local * (near * Set(0.5f) - longMean);
}

void GreenRow(const GreenInput& in, int lanes, float* green, float* difference) {
    const float* colour = in.horizontal.Colour(in.phase);
    const float* west = in.horizontal.Green(in.phase) + in.phase - 1;  // of the site to the left
    const float* east = west + 1;
    const Vec zero = Set(0.0f), maximum = Set(in.maximum);
    for (int i = 0; i < lanes; i += kStep) {
        const auto vertical = [&](int row) HWY_ATTR { return Load(in.vertical[row] + i); };
        const Vec own = vertical(4), ownAlongRow = Load(colour + i);
        // A direction is judged by the window that ends at the site.
        const Four lines{HalfLine(own, vertical(3), vertical(2), vertical(1), vertical(0), Load(in.above.local + i)),
                         HalfLine(own, vertical(5), vertical(6), vertical(7), vertical(8), Load(in.below.local + i)),
                         HalfLine(ownAlongRow, Load(west + i), Load(colour + i - 1), Load(west + i - 1),
                                  Load(colour + i - 2), Load(in.alongRow.local + i - 1)),
                         HalfLine(ownAlongRow, Load(east + i), Load(colour + i + 1), Load(east + i + 1),
                                  Load(colour + i + 2), Load(in.alongRow.local + i + 1))};
        const Four weights = InverseWeights({Load(in.above.cost + i), Load(in.below.cost + i),
                                             Load(in.alongRow.cost + i - 1), Load(in.alongRow.cost + i + 1)});
        const Vec sample = Load(in.mosaic + i);
        const Vec estimate = Clamped(sample + WeightedSum(weights, lines) / Sum(weights), zero, maximum);
        Store(estimate, green + i);
        Store(sample - estimate, difference + i);
    }
}

}  // namespace
}  // namespace kvx::ipp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx::ipp {
HWY_EXPORT(GreenRow);

void GreenRow(const GreenInput& input, int lanes, float* green, float* difference) {
    HWY_DYNAMIC_DISPATCH(GreenRow)(input, lanes, green, difference);
}
}  // namespace kvx::ipp
#endif
