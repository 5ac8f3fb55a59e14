#include <cstdlib>
#include <initializer_list>

#include "pipeline/PanInterpolation.h"
#include "pipeline/PanNoise.h"
#include "pipeline/ScratchArena.h"

namespace kvx {
namespace {

struct Offset {
    int32_t row, column;
};

constexpr Offset s_nearest[] = {{-1, -1}, {-1, 1}, {1, -1}, {1, 1}};
constexpr Offset s_window[] = {{-1, -1}, {-1, 1}, {1, -1},  {1, 1},  {-2, 0}, {0, -2},
                               {0, 2},   {2, 0},  {-2, -2}, {-2, 2}, {2, -2}, {2, 2}};

/** Pan sites are those with (row + column) even. The mirror image beyond the border keeps that. */
class Quincunx {
public:
    Quincunx(const uint16_t* plane, int32_t stride, int32_t width, int32_t height)
        : m_plane(plane), m_stride(stride), m_width(width), m_height(height) {}

    int32_t At(int32_t row, int32_t column) const {
        return m_plane[int64_t{MirroredIndex(row, m_height)} * m_stride + MirroredIndex(column, m_width)];
    }
    int32_t SumOfNearest(int32_t row, int32_t column) const {
        int32_t sum = 0;
        for (const Offset& by : s_nearest) sum += At(row + by.row, column + by.column);
        return sum;
    }

    /** The mean of a pan site and its neighbours, weighted by how little they differ. */
    int32_t Filtered(int32_t row, int32_t column, const PanThresholds& thresholds) const {
        const int32_t centre = At(row, column);
        const float threshold = thresholds[(4 * centre + SumOfNearest(row, column) + 4) >> 3];
        PanMean mean(threshold);
        for (const Offset& by : s_window) mean.Add(At(row + by.row, column + by.column) - centre);
        return mean.About(centre);
    }

    int32_t Interpolated(int32_t row, int32_t column) const {
        int32_t gradientAcross = 0, gradientDown = 0;
        for (int32_t i = row - 2; i <= row + 2; ++i)
            for (int32_t j = column - 2; j <= column + 2; ++j) {
                if ((i + j - row - column) % 2 != 0) continue;
                gradientAcross += std::abs(At(i, j - 1) - At(i, j + 1));
                gradientDown += std::abs(At(i - 1, j) - At(i + 1, j));
            }
        const int32_t across =
            AlongLine(At(row, column - 1), At(row, column + 1), At(row, column - 3), At(row, column + 3));
        const int32_t down =
            AlongLine(At(row - 1, column), At(row + 1, column), At(row - 3, column), At(row + 3, column));
        return Weighted(across, down, gradientAcross, gradientDown);
    }

private:
    const uint16_t* m_plane;
    int32_t m_stride, m_width, m_height;
};

/** A block whose upper left cell is (x, y). */
NoiseBlock BlockAt(const Quincunx& pan, int32_t x, int32_t y) {
    NoiseBlock block;
    int32_t residuals[kNoiseBlock][kNoiseBlock];
    for (int32_t i = 0; i < kNoiseBlock; ++i)
        for (int32_t j = 0; j < kNoiseBlock; ++j) {
            const int32_t row = 2 * (y + i), column = 2 * (x + j);
            residuals[i][j] = 4 * pan.At(row, column) - pan.SumOfNearest(row, column);
            block.level += pan.At(row, column);
            block.roughness += std::abs(residuals[i][j]);
            for (int32_t lag = 1; lag <= kNoiseLags; ++lag) {
                if (j >= lag) block.across[lag - 1] += std::abs(residuals[i][j] - residuals[i][j - lag]);
                if (i >= lag) block.down[lag - 1] += std::abs(residuals[i][j] - residuals[i - lag][j]);
            }
        }
    return block;
}

PanThresholds MeasuredThresholds(const Quincunx& pan, int32_t w2, int32_t h2) {
    PanNoise noise;
    for (int32_t y = 0; y + kNoiseBlock <= h2; y += kNoiseBlock)
        for (int32_t x = 0; x + kNoiseBlock <= w2; x += kNoiseBlock) noise.Count(BlockAt(pan, x, y));
    return noise.Thresholds();
}

}  // namespace

int32_t InterpolatePan(const uint16_t* pan0, const uint16_t* pan1, int32_t width, int32_t height, bool isFiltered,
                       uint16_t* pan, uint16_t* panAt0, uint16_t* panAt1, LogText_t* log) noexcept {
    const int32_t w2 = width / 2, h2 = height / 2;
    if (w2 < 1 || h2 < 1) return kStageSuccess;
    auto* filtered = TakeScratch<uint16_t>(size_t(width) * height, "panCodes", log);
    if (!filtered) return kStageFailure;
    const auto forPanSites = [=](const auto& body) {
        for (int32_t row = 0; row < 2 * h2; ++row)
            for (int32_t column = row % 2; column < 2 * w2; column += 2) body(row, column);
    };
    const auto at = [=](int32_t row, int32_t column) { return int64_t{row} * width + column; };
    const auto cell = [=](int32_t row, int32_t column) { return int64_t{row / 2} * w2 + column / 2; };

    forPanSites([=](int32_t row, int32_t column) {
        const uint16_t* quarter = row % 2 ? pan1 : pan0;
        pan[at(row, column)] = static_cast<uint16_t>(Linear12toGamma10[quarter[cell(row, column)]]);
    });
    const Quincunx noisy(pan, width, 2 * w2, 2 * h2), clean(filtered, width, 2 * w2, 2 * h2);
    const PanThresholds thresholds = isFiltered ? MeasuredThresholds(noisy, w2, h2) : NoPanThresholds();
    forPanSites([&](int32_t row, int32_t column) {
        filtered[at(row, column)] = static_cast<uint16_t>(noisy.Filtered(row, column, thresholds));
    });
    for (int32_t row = 0; row < 2 * h2; ++row)
        for (int32_t column = 0; column < 2 * w2; ++column) {
            const bool isPan = (row + column) % 2 == 0;
            const int32_t code = isPan ? clean.At(row, column) : clean.Interpolated(row, column);
            pan[at(row, column)] = static_cast<uint16_t>(code);
            if (isPan) continue;
            uint16_t* quarter = row % 2 ? panAt1 : panAt0;  // GCC's sanitizer spoils the index of (a ? b : c)[index]
            quarter[cell(row, column)] = static_cast<uint16_t>(Gamma10toLinear12[code]);
        }
    return kStageSuccess;
}

}  // namespace kvx

int32_t Alg_InterpolatePan(const uint16_t* pan0, const uint16_t* pan1, int32_t width, int32_t height, uint16_t* pan,
                           uint16_t* panAt0, uint16_t* panAt1, LogText_t* log) noexcept {
    return kvx::InterpolatePan(pan0, pan1, width, height, true, pan, panAt0, panAt1, log);
}
