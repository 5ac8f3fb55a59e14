#include "frame/learned/swift/SwiftRows.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "frame/learned/swift/SetDepth.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kvx::frame::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;
using Words = hn::ScalableTag<uint16_t>;

void Set(const uint16_t* in, size_t count, int bits, int depth, const SampleRow& out) {
    const hn::Rebind<int16_t, Words> d;
    const int up = 16 - bits, down = 16 - depth;
    for (size_t column = 0; column < count; column += hn::Lanes(Words())) {
        const auto word = hn::ShiftLeftSame(hn::LoadU(Words(), in + column), up);
        const auto signedWord = hn::BitCast(d, hn::Xor(word, hn::Set(Words(), uint16_t{0x8000})));
        const auto sample = hn::ShiftRightSame(signedWord, down);
        const auto put = [&](auto value, int16_t* to) { hn::StoreU(value, d, to + column); };
        if (out.levels) put(hn::ShiftRightSame(sample, 4 - down), out.levels);
        put(out.lower ? hn::ShiftRight<kLowerBits>(sample) : sample, out.samples);
        if (out.lower) put(hn::And(sample, hn::Set(d, (1 << kLowerBits) - 1)), out.lower);
    }
}

}  // namespace
}  // namespace kvx::frame::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx::frame {

HWY_EXPORT(Set);

void SetDepth(const uint16_t* in, size_t count, int bits, int depth, const SampleRow& out) {
    HWY_DYNAMIC_DISPATCH(Set)(in, count, bits, depth, out);
}

}  // namespace kvx::frame
#endif
