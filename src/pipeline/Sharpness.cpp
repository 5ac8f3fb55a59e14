#include "pipeline/Sharpness.h"

#include <cstdlib>

#include "pipeline/RawSamples.h"
#include "pipeline/ScratchArena.h"

namespace kvx {
namespace {

uint8_t Added(uint8_t colour, float delta) {
    return static_cast<uint8_t>(std::clamp(Truncated(static_cast<float>(colour) + delta), 0, 255));
}

int32_t Signed(uint16_t value) {
    return static_cast<int16_t>(value);
}

}  // namespace
}  // namespace kvx

int32_t Alg_Sharpness(uint8_t* rgb, uint16_t* pan, int32_t* lowPan, int32_t width, int32_t height, float sharpenParam,
                      float maxSharpen, float highLumaNoise, float lowLumaNoise, const uint16_t* toneScale,
                      LogText_t* log) noexcept {
    using namespace kvx;
    if (width < 1 || height < 1) return kStageSuccess;
    if (!g_dynamicBuffer1 || !g_dynamicBuffer2) return Fail(log, "g_dynamicBuffer1 memory alloc error.\n");
    const SharpnessTables tables = SharpnessTablesOf(sharpenParam, highLumaNoise, lowLumaNoise);
    const int64_t count = int64_t{width} * height;
    auto* cross = reinterpret_cast<uint16_t*>(g_dynamicBuffer1);
    uint16_t* diagonal = cross + count;
    auto* smooth = reinterpret_cast<int32_t*>(g_dynamicBuffer2);
    for (int64_t i = 0; i < count; ++i) {
        pan[i] = toneScale[Gamma10toLinear12[pan[i]]];
        const auto display = static_cast<int16_t>(toneScale[Gamma10toLinear12[CodeOf(lowPan[i])]]);
        lowPan[i] = display;
        cross[i] = diagonal[i] = static_cast<uint16_t>(display);
        smooth[i] = display * kCodeUnit;
    }

    constexpr float crossKernel[] = {0, 1, 0, -1, 0, -1, 0, 1, 0}, diagonalKernel[] = {1, 0, -1, 0, 0, 0, -1, 0, 1};
    constexpr float smoothKernel[] = {0.25F, 0, 0.5F, 0, 0.25F};
    const bool filtered = Alg_Convolve2D(cross, width, height, crossKernel, 3, 3, log) == kStageSuccess &&
                          Alg_Convolve2D(diagonal, width, height, diagonalKernel, 3, 3, log) == kStageSuccess &&
                          Alg_Convolve1D(smooth, width, height, smoothKernel, 5, 0, log) == kStageSuccess &&
                          Alg_Convolve1D(smooth, width, height, smoothKernel, 5, 1, log) == kStageSuccess;
    if (!filtered) return kStageFailure;

    for (int64_t i = 0; i < count; ++i, rgb += 3) {
        const int32_t activity = std::abs(Signed(cross[i])) + std::abs(Signed(diagonal[i]));
        const float delta = tables.Detail(pan[i], lowPan[i], smooth[i], activity, maxSharpen);
        for (int channel = 0; channel < 3; ++channel) rgb[channel] = Added(rgb[channel], delta);
    }
    return kStageSuccess;
}
