/** How noisy the pan samples of a frame are, measured on the frame itself. */
#pragma once

#include <array>
#include <cstdint>

#include "pipeline/GammaCodes.h"

struct ImageProcessParam;

namespace kvx {

/** Blocks of cells are measured whole; a cell is 2x2 pixels with one pan site on its even and one on its odd row. */
constexpr int32_t kNoiseBlock = 8;
constexpr int32_t kNoiseSamples = kNoiseBlock * kNoiseBlock;  // residuals in a block
constexpr int32_t kNoiseLags = 3;

/**
 * Sums over a block. There is one residual in each cell: four times the sample on the even row minus its four nearest
 * neighbours. Noise of standard deviation s gives residuals with a mean magnitude of sqrt(20) s sqrt(2 / pi).
 */
struct NoiseBlock {
    int32_t level = 0;                         ///< of the samples, in gamma codes
    int32_t roughness = 0;                     ///< of the magnitudes of the residuals
    std::array<int32_t, kNoiseLags> across{};  ///< of their differences 1, 2 and 3 cells apart along the rows
    std::array<int32_t, kNoiseLags> down{};    ///< along the columns
};

using PanThresholds = std::array<float, kGammaCodes>;

/** Thresholds that filter nothing: half a code. */
PanThresholds NoPanThresholds() noexcept;

/** Whether any pass of the noise filters runs. Otherwise pan is not filtered either. */
bool ReducesNoise(const ImageProcessParam& param) noexcept;

/** Counts blocks by brightness and roughness. Counts of parts of a frame add up to those of the frame. */
class PanNoise {
public:
    void Count(const NoiseBlock& block) noexcept;
    void Add(const PanNoise& other) noexcept;

    /**
     * By gamma code, the difference from which on two samples say nothing about each other; at least half a code.
     * Texture is rough as well, so the smoother blocks of a level give its noise, and no level is noisier than physics
     * allows for what another one shows. Where the level that decides shows plain signal, nothing is filtered.
     */
    PanThresholds Thresholds() const noexcept;

private:
    static constexpr int32_t kLevels = 16, kCodesOfLevel = kGammaCodes / kLevels, kSteps = 512;

    struct LevelNoise {
        float deviation = -1;  // linear; negative: unknown
        bool isSignal = false;
    };
    using Counts = std::array<std::array<int32_t, kSteps>, kLevels>;  // by roughness

    LevelNoise Measured(int32_t level) const noexcept;

    Counts m_blocks{}, m_signals{};  // all blocks; those that show plain signal
};

}  // namespace kvx
