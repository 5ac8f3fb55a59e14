#include "pipeline/ColorCorrection.h"

#include "pipeline/LogText.h"

int32_t Alg_ColorCorrection(const int32_t* red, const int32_t* green, const int32_t* blue, const int32_t* lowPan,
                            int32_t width, int32_t height, float rr, float rg, float rb, float gr, float gg, float gb,
                            float br, float bg, float bb, uint8_t* rgb, const uint16_t* toneScale,
                            LogText_t*) noexcept {
    using namespace kvx;
    const float matrix[3][3] = {{rr, rg, rb}, {gr, gg, gb}, {br, bg, bb}};
    const int64_t count = width > 0 && height > 0 ? int64_t{width} * height : 0;
    for (int64_t i = 0; i < count; ++i) {
        const float linear[] = {LinearOf(lowPan[i] + red[i]), LinearOf(lowPan[i] + green[i]),
                                LinearOf(lowPan[i] + blue[i])};
        for (const float(&row)[3] : matrix) *rgb++ = static_cast<uint8_t>(toneScale[Corrected(row, linear)]);
    }
    return kStageSuccess;
}
