#include "KvxBayer/ipp/SlopeRow.h"

#include "KvxBayer/ipp/Method.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "KvxBayer/ipp/SlopeRow.cpp"
#include <hwy/foreach_target.h>  // compiles this file once per instruction set

#include "KvxBayer/ipp/Vectors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::ipp::HWY_NAMESPACE {
namespace {

HWY_INLINE Vec SumOfFour(const float* values) {
    return (Load(values - 2) + Load(values + 1)) + (Load(values - 1) + Load(values));
}

void StepProductsRow(const ColourSites& row, const ColourSites& next, int lanes, const StepProducts& scratch,
                     const StepProducts& products) {
    for (int i = 0; i < lanes; i += kStep) {
        const Vec green = Load(row.green + i), sample = Load(row.mosaic + i);
        const Vec greenRight = Load(row.green + i + 1) - green, greenDown = Load(next.green + i) - green;
        const Vec sampleRight = Load(row.mosaic + i + 1) - sample, sampleDown = Load(next.mosaic + i) - sample;
        Store(greenRight * sampleRight + greenDown * sampleDown, scratch.mixed + i);
        Store(Squared(greenRight) + Squared(greenDown), scratch.green + i);
    }
    for (int i = 0; i < lanes; i += kStep) {
        Store(SumOfFour(scratch.mixed + i), products.mixed + i);
        Store(SumOfFour(scratch.green + i), products.green + i);
    }
}

void SlopeRow(const StepProducts products[4], int lanes, float* slope) {
    const auto window = [&](float* StepProducts::*plane, int i) HWY_ATTR {
        return (Load(products[0].*plane + i) + Load(products[3].*plane + i)) +
               (Load(products[1].*plane + i) + Load(products[2].*plane + i));
    };
    const Vec prior = Set(kSlopePrior), zero = Set(0.0f), largest = Set(kLargestSlope);
    for (int i = 0; i < lanes; i += kStep) {
        const Vec mixed = window(&StepProducts::mixed, i), green = window(&StepProducts::green, i);
        Store(Clamped((mixed + prior) / (green + prior), zero, largest), slope + i);
    }
}

}  // namespace
}  // namespace kvx::ipp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx::ipp {
HWY_EXPORT(StepProductsRow);
HWY_EXPORT(SlopeRow);

void StepProductsRow(const ColourSites& row, const ColourSites& next, int lanes, const StepProducts& scratch,
                     const StepProducts& products) {
    HWY_DYNAMIC_DISPATCH(StepProductsRow)(row, next, lanes, scratch, products);
}

void SlopeRow(const StepProducts products[4], int lanes, float* slope) {
    HWY_DYNAMIC_DISPATCH(SlopeRow)(products, lanes, slope);
}
}  // namespace kvx::ipp
#endif
