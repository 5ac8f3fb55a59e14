#include "demosaicers/frame/PixelWriter.h"

#include <algorithm>
#include <cstring>

#include "demosaicers/frame/PixelRow.h"
#include "demosaicers/frame/ToneIndices.h"

namespace kvx {
namespace {

bool IsShift(const std::array<uint16_t, KVX_TONE_TABLE_SIZE>& table, int shift) {
    for (size_t i = 0; i < table.size(); ++i)
        if (shift < 0 || table[i] != i << shift) return false;
    return true;
}

/**
 * Stores all pixels but the last: a store for each, whose fourth byte is the first of the next pixel.
 * @return the number of pixels
 */
size_t StoreAdjacent(const std::array<const uint16_t*, kChannels>& indices, const uint8_t* table, size_t count,
                     uint8_t* dst) {
    // Of their own: the compiler must expect stores of bytes to change the array.
    const uint16_t *const first = indices[0], *const second = indices[1], *const third = indices[2];
    for (size_t i = 0; i + 1 < count; ++i) {
        const uint32_t pixel =
            uint32_t{table[first[i]]} | uint32_t{table[second[i]]} << 8 | uint32_t{table[third[i]]} << 16;
        std::memcpy(dst + kChannels * i, &pixel, sizeof pixel);
    }
    return count - 1;
}

}  // namespace

PixelWriter::PixelWriter(const TrueSenseFrame& frame)
    : m_frame(frame), m_fixedMatrix(FixedMatrixOf(frame.matrix)), m_isLinear(IsShift(frame.tone, frame.outputShift)) {
    std::transform(frame.tone.begin(), frame.tone.end(), m_byteTone.begin(),
                   [](uint16_t value) { return static_cast<uint8_t>(value); });
    m_unitStepTone = UnitStepToneOf(m_byteTone);
}

void PixelWriter::WriteRow(int row, const std::array<const int16_t*, kChannels>& planes) const {
    alignas(64) PlaneBlock block;  // stays in the first-level cache
    uint16_t* const indices[] = {block[0].data(), block[1].data(), block[2].data()};
    const TrueSenseDestination& to = m_frame.destination;
    const auto inOrder = to.InOrder<const uint16_t*>({indices[0], indices[1], indices[2]});

    uint8_t* dst = m_frame.exchange ? nullptr : to.Row(row);
    const auto width = static_cast<size_t>(m_frame.area.region.width);
    for (size_t begin = 0; begin < width; begin += kPlaneBlock) {
        const size_t count = std::min(kPlaneBlock, width - begin);
        const int16_t* const at[] = {planes[0] + begin, planes[1] + begin, planes[2] + begin};
        if (m_frame.applyMatrix)
            ToneIndices(at, m_frame.matrix, m_fixedMatrix, count, indices);
        else
            ToneIndices(at, count, indices);
        if (m_frame.exchange) {
            for (uint16_t* plane : indices) FillPlane(plane, count, plane);
            WriteToSink(m_frame, row, begin, count, block);
            continue;
        }
        uint8_t* pixels = dst + static_cast<ptrdiff_t>(begin) * to.pixelStep;
        if (to.sampleSize == 1)
            StoreBytes(inOrder, count, pixels);
        else
            StorePixels<uint16_t>(
                0, count, to.pixelStep, pixels,
                [&, tone = m_frame.tone.data()](int channel, size_t i) { return tone[inOrder[channel][i]]; });
    }
}

void PixelWriter::FillPlane(const uint16_t* indices, size_t count, uint16_t* words) const {
    if (m_isLinear)
        std::transform(indices, indices + count, words,
                       [shift = m_frame.outputShift](uint16_t index) { return static_cast<uint16_t>(index << shift); });
    else
        std::transform(indices, indices + count, words, [this](uint16_t index) { return m_frame.tone[index]; });
}

void PixelWriter::StoreBytes(const std::array<const uint16_t*, kChannels>& indices, size_t count, uint8_t* dst) const {
    const ptrdiff_t pixelStep = m_frame.destination.pixelStep;
    size_t done = m_unitStepTone.isUsable ? StoreUnitStepTones(indices, m_unitStepTone, count, pixelStep, dst) : 0;
    if (pixelStep == kChannels && done == 0) done = StoreAdjacent(indices, m_byteTone.data(), count, dst);
    StorePixels<uint8_t>(done, count, pixelStep, dst,
                         [&, tone = m_byteTone.data()](int channel, size_t i) { return tone[indices[channel][i]]; });
}

}  // namespace kvx
