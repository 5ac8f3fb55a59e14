/** Finished planes become pixels: colour matrix, clamp, tone table, channel order. */
#pragma once

#include <array>

#include "demosaicers/frame/FixedMatrix.h"
#include "demosaicers/frame/TrueSenseFrame.h"
#include "demosaicers/frame/UnitStepTone.h"

namespace kvx {

/** Writes the rows of one frame; any number of threads may, each its own rows. */
class PixelWriter {
public:
    explicit PixelWriter(const TrueSenseFrame& frame);

    /**
     * @param row of the region
     * @param planes red, green and blue of the region's width, and a vector more that may be read
     */
    void WriteRow(int row, const std::array<const int16_t*, kChannels>& planes) const;

private:
    void FillPlane(const uint16_t* indices, size_t count, uint16_t* words) const;
    void StoreBytes(const std::array<const uint16_t*, kChannels>& indices, size_t count, uint8_t* dst) const;

    const TrueSenseFrame& m_frame;
    FixedMatrix m_fixedMatrix;
    bool m_isLinear;                                      // the frame's table only shifts
    std::array<uint8_t, KVX_TONE_TABLE_SIZE> m_byteTone;  // the frame's table for destinations of bytes
    UnitStepTone m_unitStepTone;                          // the same in another form, where it has one
};

}  // namespace kvx
