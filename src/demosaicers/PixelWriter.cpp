#include "demosaicers/PixelWriter.h"

#include <algorithm>
#include <cstring>

#include "demosaicers/ToneIndices.h"

namespace kvx {
namespace {

constexpr size_t kBlock = 512;  // pixels: their tone indices stay in the L1 cache

template <class Value>
void StorePixels(const std::array<const uint16_t*, kChannels>& indices, const Value* tone, size_t count,
                 ptrdiff_t pixelStep, uint8_t* dst) {
    for (size_t i = 0; i < count; ++i, dst += pixelStep) {
        const Value pixel[] = {tone[indices[0][i]], tone[indices[1][i]], tone[indices[2][i]]};
        std::memcpy(dst, pixel, sizeof pixel);
    }
}

}  // namespace

PixelWriter::PixelWriter(const TrueSenseFrame& frame) : m_frame(frame) {
    std::transform(frame.tone.begin(), frame.tone.end(), m_byteTone.begin(),
                   [](uint16_t value) { return static_cast<uint8_t>(value); });
}

void PixelWriter::WriteRow(int row, const std::array<const int16_t*, kChannels>& planes) const {
    alignas(64) uint16_t block[kChannels][kBlock];
    uint16_t* const indices[] = {block[0], block[1], block[2]};
    const TrueSenseDestination& to = m_frame.destination;
    const int first = to.blueFirst ? 2 : 0;
    const std::array<const uint16_t*, kChannels> inOrder = {indices[first], indices[1], indices[2 - first]};

    uint8_t* dst = to.origin + row * to.rowStep;
    const auto width = static_cast<size_t>(m_frame.area.regionWidth);
    for (size_t begin = 0; begin < width; begin += kBlock) {
        const size_t count = std::min(kBlock, width - begin);
        const int16_t* const at[] = {planes[0] + begin, planes[1] + begin, planes[2] + begin};
        if (m_frame.applyMatrix)
            ToneIndices(at, m_frame.matrix, count, indices);
        else
            ToneIndices(at, count, indices);
        uint8_t* pixels = dst + static_cast<ptrdiff_t>(begin) * to.pixelStep;
        if (to.sampleSize == 1)
            StorePixels(inOrder, m_byteTone.data(), count, to.pixelStep, pixels);
        else
            StorePixels(inOrder, m_frame.tone.data(), count, to.pixelStep, pixels);
    }
}

}  // namespace kvx
