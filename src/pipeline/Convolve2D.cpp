#include <cstring>

#include "pipeline/RawSamples.h"
#include "pipeline/ScratchArena.h"

int32_t Alg_Convolve2D(uint16_t* plane, int32_t width, int32_t height, const float* kernel, int32_t columns,
                       int32_t rows, LogText_t* log) noexcept {
    using namespace kvx;
    if (width < 1 || height < 1) return kStageSuccess;
    if (columns < 1 || rows < 1 || columns % 2 == 0 || rows % 2 == 0) return kStageFailure;
    const size_t bytes = size_t(width) * height * sizeof *plane;
    auto* copy = static_cast<uint16_t*>(PeekScratch(bytes, "pBuf", log));
    if (!copy) return kStageFailure;
    std::memcpy(copy, plane, bytes);
    const int32_t across = columns / 2, down = rows / 2;
    for (int32_t row = down; row < height - down; ++row)
        for (int32_t column = across; column < width - across; ++column) {
            float sum = 0;
            for (int32_t i = -down; i <= down; ++i)
                for (int32_t j = -across; j <= across; ++j)
                    sum += static_cast<float>(copy[int64_t{row + i} * width + column + j]) *
                           kernel[(down - i) * columns + across - j];
            plane[int64_t{row} * width + column] = static_cast<uint16_t>(Truncated(sum));
        }
    return kStageSuccess;
}
