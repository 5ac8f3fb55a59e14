#include "demosaicers/frame/PixelRow.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "demosaicers/frame/PixelRow.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kvx::HWY_NAMESPACE {
namespace {
namespace hn = hwy::HWY_NAMESPACE;

/** Pixels of three bytes without gaps. @return how many were written */
size_t StoreBytes(const std::array<const uint16_t*, kChannels>& colours, size_t width, uint8_t* to) {
    const hn::ScalableTag<uint8_t> bytes;
    const hn::Half<decltype(bytes)> halfOfBytes;
    const hn::Rebind<int16_t, decltype(halfOfBytes)> words;
    const size_t half = hn::Lanes(words);
    const auto demoted = [&](const uint16_t* from) {
        return hn::DemoteTo(halfOfBytes, hn::LoadU(words, reinterpret_cast<const int16_t*>(from)));
    };
    const auto load = [&](const uint16_t* from) { return hn::Combine(bytes, demoted(from + half), demoted(from)); };
    size_t k = 0;
    for (; k + 2 * half <= width; k += 2 * half)
        hn::StoreInterleaved3(load(colours[0] + k), load(colours[1] + k), load(colours[2] + k), bytes,
                              to + kChannels * k);
    return k;
}

}  // namespace
}  // namespace kvx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx {
namespace {

HWY_EXPORT(StoreBytes);

}  // namespace

void StorePixelRow(const TrueSenseDestination& to, int row, const std::array<const uint16_t*, kChannels>& colours,
                   size_t width, int shift) noexcept {
    const auto inOrder = to.InOrder(colours);
    uint8_t* pixels = to.Row(row);
    if (to.sampleSize == sizeof(uint16_t)) {
        StorePixels<uint16_t>(0, width, to.pixelStep, pixels, [&](int channel, size_t k) {
            const unsigned colour = inOrder[channel][k];
            return shift < 0 ? colour >> -shift : colour << shift;
        });
        return;
    }
    const size_t done = to.pixelStep == kChannels ? HWY_DYNAMIC_DISPATCH(StoreBytes)(inOrder, width, pixels) : 0;
    StorePixels<uint8_t>(done, width, to.pixelStep, pixels, [&](int channel, size_t k) { return inOrder[channel][k]; });
}

}  // namespace kvx
#endif
