#include "pipeline/LogText.h"
#include "pipeline/UpSample.h"

int32_t Alg_LowPanUpSample(const int32_t* lowPan, int32_t w2, int32_t h2, int32_t* out, LogText_t* log) noexcept {
    kvx::CopyToCells(lowPan, w2, h2, out);
    return kvx::SmoothCells(out, w2, h2, log);
}
