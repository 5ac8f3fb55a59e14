#include "demosaicers/denoising/PixelRows.h"

#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "demosaicers/denoising/PixelRows.cpp"
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

template <class Value>
void StorePixels(const std::array<const uint16_t*, kChannels>& colours, size_t begin, size_t end, int shift,
                 ptrdiff_t pixelStep, uint8_t* to) {
    to += static_cast<ptrdiff_t>(begin) * pixelStep;
    for (size_t k = begin; k < end; ++k, to += pixelStep)
        for (int channel = 0; channel < kChannels; ++channel) {
            const unsigned colour = colours[channel][k];
            const auto value = static_cast<Value>(shift < 0 ? colour >> -shift : colour << shift);
            std::memcpy(to + channel * sizeof value, &value, sizeof value);
        }
}

}  // namespace

void StorePixelRow(const TrueSenseDestination& to, int row, const std::array<const uint16_t*, kChannels>& colours,
                   size_t width, int shift) noexcept {
    uint8_t* pixels = to.origin + row * to.rowStep;
    const int first = to.blueFirst ? 2 : 0;
    const std::array<const uint16_t*, kChannels> inOrder = {colours[first], colours[1], colours[2 - first]};
    if (to.sampleSize == sizeof(uint16_t)) {
        StorePixels<uint16_t>(inOrder, 0, width, shift, to.pixelStep, pixels);
        return;
    }
    const size_t done = to.pixelStep == kChannels ? HWY_DYNAMIC_DISPATCH(StoreBytes)(inOrder, width, pixels) : 0;
    StorePixels<uint8_t>(inOrder, done, width, 0, to.pixelStep, pixels);
}

}  // namespace kvx
#endif
