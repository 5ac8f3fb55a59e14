#include "pipeline/ColorCorrection.h"

#include "pipeline/LogText.h"

int32_t Alg_ColorCorrection(const int32_t* red, const int32_t* green, const int32_t* blue, const int32_t* lowPan,
                            int32_t width, int32_t height, const float colorMatrix[9], uint8_t* rgb,
                            const uint16_t* toneScale, LogText_t*) noexcept {
    using namespace kvx;
    const int64_t count = width > 0 && height > 0 ? int64_t{width} * height : 0;
    for (int64_t i = 0; i < count; ++i) {
        const float linear[] = {LinearOf(lowPan[i] + red[i]), LinearOf(lowPan[i] + green[i]),
                                LinearOf(lowPan[i] + blue[i])};
        for (int channel = 0; channel < 3; ++channel)
            *rgb++ = static_cast<uint8_t>(toneScale[Corrected(colorMatrix + ptrdiff_t{3} * channel, linear)]);
    }
    return kStageSuccess;
}
