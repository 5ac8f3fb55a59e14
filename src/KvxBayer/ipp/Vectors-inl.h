/**
 * Vectors of floats as the row kernels write them.
 *
 * Every operation used is exact or correctly rounded, and none is fused: all instruction sets give the same bits.
 */
// Included once per instruction set.
#if defined(KVX_IPP_VECTORS) == defined(HWY_TARGET_TOGGLE)
#ifdef KVX_IPP_VECTORS
#undef KVX_IPP_VECTORS
#else
#define KVX_IPP_VECTORS
#endif

#include <hwy/highway.h>

#include "KvxBayer/ipp/Lanes.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::ipp::HWY_NAMESPACE {
namespace {
namespace hn = hwy::HWY_NAMESPACE;

using Floats = hn::CappedTag<float, kLaneBlock>;
using Raw = hn::Vec<Floats>;

/** A vector with operators, also where the compiler's own vector types have none. */
struct Vec {
    Raw raw;
};
HWY_INLINE Vec operator+(Vec a, Vec b) {
    return {hn::Add(a.raw, b.raw)};
}
HWY_INLINE Vec operator-(Vec a, Vec b) {
    return {hn::Sub(a.raw, b.raw)};
}
HWY_INLINE Vec operator*(Vec a, Vec b) {
    return {hn::Mul(a.raw, b.raw)};
}
HWY_INLINE Vec operator/(Vec a, Vec b) {
    return {hn::Div(a.raw, b.raw)};
}
HWY_INLINE Vec Distance(Vec a, Vec b) {
    return {hn::Abs(hn::Sub(a.raw, b.raw))};
}
HWY_INLINE Vec Squared(Vec a) {
    return a * a;
}
HWY_INLINE Vec Clamped(Vec a, Vec low, Vec high) {
    return {hn::Min(hn::Max(a.raw, low.raw), high.raw)};
}
HWY_INLINE Vec Set(float value) {
    return {hn::Set(Floats(), value)};
}
HWY_INLINE Vec Load(const float* from) {
    return {hn::LoadU(Floats(), from)};
}
HWY_INLINE void Store(Vec a, float* to) {
    hn::StoreU(a.raw, Floats(), to);
}

constexpr int kStep = static_cast<int>(hn::MaxLanes(Floats()));

}  // namespace
}  // namespace kvx::ipp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
