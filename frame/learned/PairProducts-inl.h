/** Multiplies pairs of 16-bit words and adds the products to 32-bit sums. */
// Included once per instruction set.
#if defined(KVX_PAIR_PRODUCTS) == defined(HWY_TARGET_TOGGLE)
#ifdef KVX_PAIR_PRODUCTS
#undef KVX_PAIR_PRODUCTS
#else
#define KVX_PAIR_PRODUCTS
#endif

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kvx::frame::HWY_NAMESPACE {
namespace {

/**
 * `even` and the products of pairs; other processors than x86 add some of them to `odd`. The statements give the sum
 * its place in the order of instructions, and its register: GCC puts off adding until it runs out of registers for the
 * products, and copies sums.
 */
template <class Words, class Sum>
HWY_INLINE Sum PlusProducts(Words pairs, Words factors, Sum even, Sum& odd) {
    namespace hn = hwy::HWY_NAMESPACE;
#if HWY_TARGET == HWY_AVX3_DL
    (void)odd;
    asm("vpdpwssd %2, %1, %0" : "+v"(even.raw) : "v"(pairs.raw), "v"(factors.raw));  // multiplies and adds at once
#elif HWY_ARCH_X86 && HWY_TARGET <= HWY_AVX2
    const hn::DFromV<Sum> d;
    const Sum products = hn::ReorderWidenMulAccumulate(d, pairs, factors, hn::Zero(d), odd);
    asm("vpaddd %1, %0, %0" : "+v"(even.raw) : "v"(products.raw));
#else
    even = hn::ReorderWidenMulAccumulate(hn::DFromV<Sum>(), pairs, factors, even, odd);
#if HWY_ARCH_X86 && HWY_TARGET != HWY_EMU128
    asm("" : "+v"(even.raw));
#endif
#endif
    return even;
}

}  // namespace
}  // namespace kvx::frame::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
