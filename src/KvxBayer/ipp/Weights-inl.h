/** The weights of a mean over four directions. */
// Included once per instruction set.
#if defined(KVX_IPP_WEIGHTS) == defined(HWY_TARGET_TOGGLE)
#ifdef KVX_IPP_WEIGHTS
#undef KVX_IPP_WEIGHTS
#else
#define KVX_IPP_WEIGHTS
#endif

#include "KvxBayer/ipp/Vectors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::ipp::HWY_NAMESPACE {
namespace {

/** Four values, one for each direction: two opposite pairs. */
struct Four {
    Vec a, opposite, b, oppositeB;
};

/** Proportional to the inverses of four positive costs, without a division. */
HWY_INLINE Four InverseWeights(const Four& cost) {
    const Vec pairA = cost.a * cost.opposite, pairB = cost.b * cost.oppositeB;
    return {cost.opposite * pairB, cost.a * pairB, cost.oppositeB * pairA, cost.b * pairA};
}

HWY_INLINE Vec Sum(const Four& values) {
    return (values.a + values.opposite) + (values.b + values.oppositeB);
}

HWY_INLINE Vec WeightedSum(const Four& weights, const Four& values) {
    return (weights.a * values.a + weights.opposite * values.opposite) +
           (weights.b * values.b + weights.oppositeB * values.oppositeB);
}

}  // namespace
}  // namespace kvx::ipp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
