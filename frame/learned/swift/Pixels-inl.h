/** Pixels from words. */
// Included once per instruction set.
#if defined(KVX_SWIFT_PIXELS) == defined(HWY_TARGET_TOGGLE)
#ifdef KVX_SWIFT_PIXELS
#undef KVX_SWIFT_PIXELS
#else
#define KVX_SWIFT_PIXELS
#endif

#include <hwy/highway.h>

#include "frame/learned/swift/Sums-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::frame::HWY_NAMESPACE {
namespace {

/** Writes vectors of pixels. */
class PixelWriter {
public:
    PixelWriter(const PixelInput& input, const PixelRow& out)
        : m_out(out),
          m_own(Repeated(input.filters.own)),
          m_green(Repeated(input.filters.green)),
          m_half(hn::Set(Words(), static_cast<int16_t>(1 << (16 - out.sampleBits) >> 1))),
          m_up(input.up) {}

    /** @param samples of the mosaic, which stay as they are */
    HWY_INLINE void Put(size_t column, V own, V green, V other, V samples) const {
        const V known = hn::ShiftLeftSame(samples, m_up);
        PutPlane(hn::IfVecThenElse(m_own, known, own), m_out.own + column);
        PutPlane(hn::IfVecThenElse(m_green, known, green), m_out.green + column);
        PutPlane(other, m_out.other + column);
    }

private:
    HWY_INLINE void PutPlane(V signedWord, uint16_t* to) const {
        const auto rounded = hn::BitCast(Unsigned(), hn::SaturatedAdd(signedWord, m_half));
        const auto word = hn::Xor(rounded, hn::Set(Unsigned(), uint16_t{0x8000}));
        hn::StoreU(hn::ShiftRightSame(word, 16 - m_out.bits), Unsigned(), to);
    }

    PixelRow m_out;
    V m_own, m_green, m_half;
    int m_up;
};

}  // namespace
}  // namespace kvx::frame::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
