#include "pipeline/UpSample.h"

namespace kvx {

void CopyToCells(const int32_t* low, int32_t w2, int32_t h2, int32_t* out) noexcept {
    const int32_t width = 2 * w2;
    for (int32_t row = 0; row < 2 * h2; ++row)
        for (int32_t column = 0; column < width; ++column)
            out[int64_t{row} * width + column] = low[int64_t{row / 2} * w2 + column / 2];
}

int32_t SmoothCells(int32_t* plane, int32_t w2, int32_t h2, LogText_t* log) noexcept {
    constexpr float kernel[] = {0.25F, 0.5F, 0.25F};
    for (int32_t direction = 0; direction < 2; ++direction)
        if (Alg_Convolve1D(plane, 2 * w2, 2 * h2, kernel, 3, direction, log) != kStageSuccess) return kStageFailure;
    return kStageSuccess;
}

}  // namespace kvx
