/** How noisy the pan samples of a frame are, measured on the frame itself. */
#pragma once

#include <array>
#include <cstdint>

#include "pipeline/GammaCodes.h"

namespace kvx {

/** Blocks of cells are measured whole; a cell is 2x2 pixels with one pan site on its even and one on its odd row. */
constexpr int32_t kNoiseBlock = 8;
constexpr int32_t kNoiseSamples = kNoiseBlock * kNoiseBlock;  // residuals in a block

using PanThresholds = std::array<float, kGammaCodes>;

/**
 * Counts blocks by brightness and roughness. The residual of a sample is four times itself minus its four nearest
 * neighbours; noise of standard deviation s gives a mean magnitude of sqrt(20) s sqrt(2 / pi). Counts of parts of a
 * frame add up to those of the frame.
 */
class PanNoise {
public:
    /** @param level sum of a block's samples, as gamma codes; `roughness` sum of the magnitudes of its residuals */
    void Count(int32_t level, int32_t roughness) noexcept {
        const int32_t row = level / kNoiseSamples / kCodesOfLevel, column = roughness / kNoiseSamples;
        ++m_blocks[row][column < kSteps ? column : kSteps - 1];
    }
    void Add(const PanNoise& other) noexcept;

    /**
     * By gamma code the difference, at least half a code, from which on two samples tell nothing of each other. Texture
     * is rough, too: the smoother blocks of a level tell the noise, and no level is noisier than physics allows for
     * what another one shows.
     */
    PanThresholds Thresholds() const noexcept;

private:
    static constexpr int32_t kLevels = 16, kCodesOfLevel = kGammaCodes / kLevels, kSteps = 512;

    using LevelNoise = std::array<float, kLevels>;  // standard deviations, linear; negative: unknown

    LevelNoise Measured() const noexcept;

    std::array<std::array<int32_t, kSteps>, kLevels> m_blocks{};
};

}  // namespace kvx
