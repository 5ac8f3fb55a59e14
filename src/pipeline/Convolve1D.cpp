#include <cstring>

#include "pipeline/RawSamples.h"
#include "pipeline/ScratchArena.h"

int32_t Alg_Convolve1D(int32_t* plane, int32_t width, int32_t height, const float* kernel, int32_t taps,
                       int32_t direction, LogText_t* log) noexcept {
    using namespace kvx;
    if (width < 1 || height < 1) return kStageSuccess;
    if (taps < 1 || taps % 2 == 0) return kStageFailure;
    const size_t bytes = size_t(width) * height * sizeof *plane;
    auto* copy = static_cast<int32_t*>(PeekScratch(bytes, "pBuf", log));
    if (!copy) return kStageFailure;
    std::memcpy(copy, plane, bytes);
    if (direction != 0 && direction != 1) return kStageSuccess;

    const bool alongRows = direction == 0;
    const int32_t radius = taps / 2, length = alongRows ? width : height;
    const int64_t step = alongRows ? 1 : width;
    for (int32_t row = 0; row < height; ++row)
        for (int32_t column = 0; column < width; ++column) {
            const int32_t place = alongRows ? column : row;
            if (place < radius || place >= length - radius) continue;
            const int64_t at = int64_t{row} * width + column;
            float sum = 0;
            for (int32_t t = -radius; t <= radius; ++t)
                sum += static_cast<float>(copy[at + t * step]) * kernel[radius - t];
            plane[at] = Truncated(sum);
        }
    return kStageSuccess;
}
