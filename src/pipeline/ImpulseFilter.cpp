#include <algorithm>
#include <cstring>

#include "pipeline/ScratchArena.h"

namespace kvx {
namespace {

struct Plane {
    const int32_t* values;
    int32_t width, height;

    /** Clamped to the range of the up to eight neighbours at `step`. */
    int32_t Clamped(int32_t row, int32_t column, int32_t step) const {
        const int32_t centre = values[int64_t{row} * width + column];
        int32_t least = INT32_MAX, most = INT32_MIN;
        for (int64_t i = int64_t{row} - step; i <= int64_t{row} + step; i += step)
            for (int64_t j = int64_t{column} - step; j <= int64_t{column} + step; j += step) {
                const bool isNeighbour = i != row || j != column;
                if (!isNeighbour || i < 0 || i >= height || j < 0 || j >= width) continue;
                least = std::min(least, values[i * width + j]);
                most = std::max(most, values[i * width + j]);
            }
        return least > most ? centre : std::clamp(centre, least, most);
    }
};

}  // namespace
}  // namespace kvx

int32_t Alg_ImpulseFilter(int32_t* plane, int32_t dataType, int32_t width, int32_t height, int32_t step,
                          LogText_t* log) noexcept {
    using namespace kvx;
    if (dataType != PlaneType_Int32) return Fail(log, "data type error.\n");
    if (width < 1 || height < 1 || step < 1) return kStageSuccess;
    const size_t bytes = size_t(width) * height * sizeof *plane;
    auto* copy = static_cast<int32_t*>(PeekScratch(bytes, "impulsePlane", log));
    if (!copy) return kStageFailure;
    std::memcpy(copy, plane, bytes);
    const Plane source{copy, width, height};
    for (int32_t row = 0; row < height; ++row)
        for (int32_t column = 0; column < width; ++column) *plane++ = source.Clamped(row, column, step);
    return kStageSuccess;
}
