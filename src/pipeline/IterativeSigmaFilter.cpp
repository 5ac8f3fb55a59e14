#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "pipeline/LogText.h"
#include "pipeline/SigmaFilter.h"

namespace kvx {
namespace {

class Window {
public:
    Window(const int32_t* plane, int32_t width, int32_t height, int32_t radius)
        : m_plane(plane), m_width(width), m_height(height), m_radius(std::min(radius, kLargestSigmaRadius)) {}

    int32_t Filtered(int32_t row, int32_t column, int32_t threshold) const {
        const int32_t centre = At(row, column);
        if (threshold <= 0) return centre;
        int32_t sum = 0, count = 0;
        for (int32_t i = std::max(row - m_radius, 0); i <= std::min(row + m_radius, m_height - 1); ++i)
            for (int32_t j = std::max(column - m_radius, 0); j <= std::min(column + m_radius, m_width - 1); ++j) {
                const int32_t difference = At(i, j) - centre;
                if (std::abs(difference) > threshold) continue;
                sum += difference >> kSigmaSumShift;
                ++count;
            }
        if (count == 1 && !IsBorder(row, column)) return ClampedToNearest(row, column);
        return SigmaMean(centre, sum, count);
    }

private:
    int32_t At(int32_t row, int32_t column) const {
        return m_plane[int64_t{row} * m_width + column];
    }
    bool IsBorder(int32_t row, int32_t column) const {
        return row == 0 || row == m_height - 1 || column == 0 || column == m_width - 1;
    }
    int32_t ClampedToNearest(int32_t row, int32_t column) const {
        const auto [least, most] =
            std::minmax({At(row - 1, column), At(row + 1, column), At(row, column - 1), At(row, column + 1)});
        return std::clamp(At(row, column), least, most);
    }

    const int32_t* m_plane;
    int32_t m_width, m_height, m_radius;
};

}  // namespace
}  // namespace kvx

int32_t Alg_IterativeSigmaFilter(int32_t* plane, int32_t* copy, int32_t width, int32_t height, int32_t radius,
                                 const int32_t* thresholds, LogText_t*) noexcept {
    if (width < 1 || height < 1 || radius < 1) return kvx::kStageSuccess;
    const kvx::Window window(copy, width, height, radius);
    for (int32_t row = 0, i = 0; row < height; ++row)
        for (int32_t column = 0; column < width; ++column, ++i) plane[i] = window.Filtered(row, column, thresholds[i]);
    std::memcpy(copy, plane, size_t(width) * height * sizeof *plane);
    return kvx::kStageSuccess;
}
