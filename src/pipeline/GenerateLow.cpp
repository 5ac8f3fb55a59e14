#include "pipeline/GammaCodes.h"
#include "pipeline/LogText.h"

namespace kvx {
namespace {

constexpr int32_t kSameColour = 2;  // cells to the next one of the same colour

}  // namespace
}  // namespace kvx

int32_t Alg_GenerateLow(const uint16_t* pan, const uint16_t* panAt0, const uint16_t* panAt1, const uint16_t* colour0,
                        const uint16_t* colour1, int32_t width, int32_t height, int32_t* lowPan, uint16_t* lowColour,
                        int32_t* lowColorDiff, LogText_t* log) noexcept {
    using namespace kvx;
    const int32_t w2 = width / 2, h2 = height / 2;
    if (w2 < 1 || h2 < 1) return kStageSuccess;
    for (int32_t y = 0, j = 0; y < h2; ++y)
        for (int32_t x = 0; x < w2; ++x, ++j) {
            const uint16_t *upper = pan + int64_t{2} * y * width + int64_t{2} * x, *lower = upper + width;
            const int32_t difference = CodeOfMean(colour0[j], colour1[j]) - CodeOfMean(panAt0[j], panAt1[j]);
            lowColorDiff[j] = difference * kCodeUnit;
            lowPan[j] = (upper[0] + upper[1] + lower[0] + lower[1]) * (kCodeUnit / 4);
        }
    if (Alg_ImpulseFilter(lowColorDiff, PlaneType_Int32, w2, h2, kSameColour, log) != kStageSuccess)
        return kStageFailure;
    for (int64_t j = 0; j < int64_t{w2} * h2; ++j)
        lowColour[j] = static_cast<uint16_t>(CodeOf(lowPan[j] + lowColorDiff[j]));
    return kStageSuccess;
}
