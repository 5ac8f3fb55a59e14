/** Full-resolution rows of low-pass pan and colours, made in rings as a band of rows is walked down. */
#pragma once

#include "demosaicers/denoising/FinishRows.h"
#include "demosaicers/denoising/PaddedPlane.h"

namespace kvx {

/** The half-resolution planes that are doubled. */
struct LowPlanes {
    const PaddedPlane<int32_t>*lowPan, *lowColorDiff;
    int cells, cellRows;
};

/** Per-thread state. */
class UpSampler {
public:
    /** @return false without memory */
    bool Reserve(int width) noexcept;

    /** Starts at a full-resolution row. */
    void Begin(const LowPlanes& planes, int row) noexcept;

    // Rows are asked for in ascending order, each kind by itself.
    void LowPanUpSample(int row, int32_t* values, int16_t* codes) noexcept;
    void LowColorDiffUpSample(int row, const int32_t* lowPan, const std::array<int16_t*, 3>& codes) noexcept;

private:
    static constexpr int kRing = 4, kColours = 3;

    int32_t* Sums(int colour, int cellRow) const;
    float* Doubled(int plane, int cellRow) const;
    DoubledRows RowsAbout(int plane, int row) const;
    void SumColours(int cellRow);
    void DoubleColours(int cellRow);

    LowPlanes m_planes{};
    int m_nextPan = 0, m_nextSums = 0, m_nextColour = 0;  // cell rows
    PaddedPlane<int32_t> m_sums;   // a ring of rows for each colour, a row of zeros, and one more
    PaddedPlane<float> m_doubled;  // a ring of rows for each colour and for pan
};

}  // namespace kvx
