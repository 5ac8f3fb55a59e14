/** Measures the noise of pan rows, block by block. */
#pragma once

#include "demosaicers/denoising/PipelinePlanes.h"
#include "pipeline/PanNoise.h"

namespace kvx {

/** Per-thread state. */
class PanNoiseMeter {
public:
    /** @return false without memory */
    bool Reserve(int cells) noexcept;

    void Begin() noexcept {
        m_noise = PanNoise();
    }
    /** Counts the blocks of cell rows [kNoiseBlock blockRow, kNoiseBlock (blockRow + 1)). */
    void CountBlocks(const PipelinePlanes& planes, int blockRow) noexcept;

    const PanNoise& Noise() const {
        return m_noise;
    }

private:
    NoiseBlock BlockAt(int firstCell) const noexcept;

    PanNoise m_noise;
    PaddedPlane<int16_t> m_residuals;  // of the cell rows of a block
    PaddedPlane<uint16_t> m_sums;      // of columns, in the order of NoiseBlock
};

}  // namespace kvx
