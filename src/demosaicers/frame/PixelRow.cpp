#include "demosaicers/frame/PixelRow.h"

#include <algorithm>

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

void WriteToSink(const TrueSenseFrame& frame, int row, size_t column, size_t count, PlaneBlock& planes) noexcept {
    const Area& region = frame.area.region;
    size_t first = column;
    if (frame.source.backwards) {
        first = static_cast<size_t>(region.width) - column - count;
        for (auto& plane : planes) std::reverse(plane.begin(), plane.begin() + static_cast<ptrdiff_t>(count));
    }
    frame.exchange->Write(static_cast<uint32_t>(frame.source.upwards ? region.height - 1 - row : row),
                          static_cast<uint32_t>(first), static_cast<uint32_t>(count),
                          std::array{planes[0].data(), planes[1].data(), planes[2].data()});
}

void StorePixelRow(const TrueSenseFrame& frame, int row, const std::array<const uint16_t*, kChannels>& colours,
                   size_t width, int shift) noexcept {
    const TrueSenseDestination& to = frame.destination;
    const int places = to.sampleSize == sizeof(uint16_t) ? shift : 0;
    const auto shifted = [places](unsigned colour) {
        return static_cast<uint16_t>(places < 0 ? colour >> -places : colour << places);
    };
    if (frame.exchange) {
        PlaneBlock planes;
        for (size_t begin = 0; begin < width; begin += kPlaneBlock) {
            const size_t count = std::min(kPlaneBlock, width - begin);
            for (size_t channel = 0; channel < kChannels; ++channel)
                std::transform(colours[channel] + begin, colours[channel] + begin + count, planes[channel].begin(),
                               shifted);
            WriteToSink(frame, row, begin, count, planes);
        }
        return;
    }
    const auto inOrder = to.InOrder(colours);
    uint8_t* pixels = to.Row(row);
    if (to.sampleSize == sizeof(uint16_t)) {
        StorePixels<uint16_t>(0, width, to.pixelStep, pixels,
                              [&](int channel, size_t k) { return shifted(inOrder[channel][k]); });
        return;
    }
    const size_t done = to.pixelStep == kChannels ? HWY_DYNAMIC_DISPATCH(StoreBytes)(inOrder, width, pixels) : 0;
    StorePixels<uint8_t>(done, width, to.pixelStep, pixels, [&](int channel, size_t k) { return inOrder[channel][k]; });
}

}  // namespace kvx
#endif
