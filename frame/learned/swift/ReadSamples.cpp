#include "frame/learned/swift/SwiftRows.h"

#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "frame/learned/swift/ReadSamples.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kvx::frame::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;
using Words = hn::ScalableTag<uint16_t>;

hn::Vec<Words> Widened(hn::Vec<Words> v) {
    return v;
}
hn::Vec<Words> Widened(hn::Vec<hn::Rebind<uint8_t, Words>> v) {
    return hn::PromoteTo(Words(), v);
}

/** One vector. */
template <class T>
HWY_INLINE void Block(const T* in, int up, int down, size_t column, const SampleRow& out) {
    const hn::Rebind<int16_t, Words> d;
    const hn::Rebind<T, Words> dIn;
    const auto word = hn::ShiftLeftSame(Widened(hn::LoadU(dIn, in)), up);
    const auto sample = hn::ShiftRightSame(hn::BitCast(d, hn::Xor(word, hn::Set(Words(), uint16_t{0x8000}))), down);
    const auto put = [&](auto value, int16_t* to) { hn::StoreU(value, d, to + column); };
    if (out.levels) put(hn::ShiftRightSame(sample, 4 - down), out.levels);
    if (!out.lower) return put(sample, out.samples);
    put(hn::ShiftRight<kLowerBits>(sample), out.samples);
    put(hn::And(sample, hn::Set(d, (1 << kLowerBits) - 1)), out.lower);
}

template <class T>
void Read(const uint8_t* in, size_t count, int bits, int depth, const SampleRow& out) {
    const int up = 16 - bits, down = 16 - depth;
    const size_t lanes = hn::Lanes(Words());
    size_t column = 0;
    for (; column + lanes <= count; column += lanes)
        Block(reinterpret_cast<const T*>(in) + column, up, down, column, out);
    if (column == count) return;
    T rest[hn::MaxLanes(Words())] = {};
    int16_t planes[3][hn::MaxLanes(Words())];
    std::memcpy(rest, in + column * sizeof(T), (count - column) * sizeof(T));
    const SampleRow whole{planes[0], out.lower ? planes[1] : nullptr, out.levels ? planes[2] : nullptr};
    Block(static_cast<const T*>(rest), up, down, 0, whole);
    const auto put = [&](const int16_t* from, int16_t* to) {
        if (from) std::memcpy(to + column, from, (count - column) * sizeof(int16_t));
    };
    put(whole.samples, out.samples);
    put(whole.lower, out.lower);
    put(whole.levels, out.levels);
}

void ReadBytesOrWords(const uint8_t* in, size_t count, int bits, int depth, const SampleRow& out) {
    bits == 8 ? Read<uint8_t>(in, count, bits, depth, out) : Read<uint16_t>(in, count, bits, depth, out);
}

}  // namespace
}  // namespace kvx::frame::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx::frame {

HWY_EXPORT(ReadBytesOrWords);

void ReadSamples(const uint8_t* in, size_t count, int bits, int depth, const SampleRow& out) {
    HWY_DYNAMIC_DISPATCH(ReadBytesOrWords)(in, count, bits, depth, out);
}

}  // namespace kvx::frame
#endif
