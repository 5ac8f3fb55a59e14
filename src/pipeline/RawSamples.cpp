#include "pipeline/RawSamples.h"

#include <cstring>

#include "pipeline/LogText.h"

int32_t Alg_SubtractDarkFloor(const uint8_t* raw, int32_t width, int32_t height, int32_t darkFloor, uint16_t* output,
                              LogText_t*) noexcept {
    const int64_t count = width > 0 && height > 0 ? int64_t{width} * height : 0;
    for (int64_t i = 0; i < count; ++i) {
        uint16_t sample;  // 16 bits, although the samples are passed as bytes
        std::memcpy(&sample, raw + i * int64_t{sizeof sample}, sizeof sample);
        output[i] = static_cast<uint16_t>(kvx::SubtractedFloor(sample, darkFloor));
    }
    return kvx::kStageSuccess;
}

int32_t ApplyGlobalGain(int16_t* samples, int32_t count, float gain) noexcept {
    for (int32_t i = 0; i < count; ++i) samples[i] = static_cast<int16_t>(kvx::Gained(samples[i], gain));
    return kvx::kStageSuccess;
}
