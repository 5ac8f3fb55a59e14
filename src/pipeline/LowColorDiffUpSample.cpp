#include <algorithm>

#include "pipeline/CfaTables.h"
#include "pipeline/ScratchArena.h"
#include "pipeline/UpSample.h"

namespace kvx {
namespace {

/** A weighted mean of the cells of one colour: weights 1 2 1 in both directions, divided by what they sum up to. */
int32_t SpreadColour(int32_t* plane, int32_t w2, int32_t h2, int32_t sumOfWeights, LogText_t* log) {
    constexpr float kernel[] = {1.0F, 2.0F, 1.0F};
    for (int32_t direction = 0; direction < 2; ++direction)
        if (Alg_Convolve1D(plane, w2, h2, kernel, 3, direction, log) != kStageSuccess) return kStageFailure;
    std::transform(plane, plane + int64_t{w2} * h2, plane, [=](int32_t value) { return value / sumOfWeights; });
    return kStageSuccess;
}

}  // namespace
}  // namespace kvx

int32_t Alg_LowColorDiffUpSample(const int32_t* lowColorDiff, int32_t w2, int32_t h2, int32_t cfaPattern, int32_t* red,
                                 int32_t* green, int32_t* blue, LogText_t* log) noexcept {
    using namespace kvx;
    if (!IsCfaPattern(cfaPattern)) return Fail(log, kPatternError);
    if (w2 < 1 || h2 < 1) return kStageSuccess;
    const CellTable& cells = *s_cellTables[cfaPattern];
    const int64_t count = int64_t{w2} * h2;
    auto* buffer = reinterpret_cast<int32_t*>(g_dynamicBuffer1);
    if (!buffer) return Fail(log, "g_dynamicBuffer1 memory alloc error.\n");
    std::fill_n(buffer, 3 * count, 0);
    int32_t* const planes[] = {buffer, buffer + count, buffer + 2 * count};
    for (int32_t y = 0; y < h2; ++y)
        for (int32_t x = 0; x < w2; ++x) {
            const int32_t code = cells[y % 2][x % 2];
            if (code < kRed || code > kBlue) return Fail(log, kColourError);
            planes[code][int64_t{y} * w2 + x] = lowColorDiff[int64_t{y} * w2 + x];
        }
    constexpr struct {
        CellCode colour;
        int32_t sumOfWeights;  // two cells of four are green
    } steps[] = {{kRed, 4}, {kBlue, 4}, {kGreen, 8}};
    for (const auto& [colour, sumOfWeights] : steps)
        if (SpreadColour(planes[colour], w2, h2, sumOfWeights, log) != kStageSuccess) return kStageFailure;
    int32_t* const out[] = {red, green, blue};
    for (const CellCode colour : {kRed, kGreen, kBlue}) CopyToCells(planes[colour], w2, h2, out[colour]);
    for (int32_t* plane : out)
        if (SmoothCells(plane, w2, h2, log) != kStageSuccess) return kStageFailure;
    return kStageSuccess;
}
