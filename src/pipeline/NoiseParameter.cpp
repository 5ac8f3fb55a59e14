#include "pipeline/LogText.h"

int32_t Alg_CalculateNoiseParameter(float gain, const float gains[5], const float slopes[5], const float intercepts[5],
                                    float* slope, float* intercept, LogText_t*) noexcept {
    constexpr int last = 4;
    int i = 0;
    while (i < last && gains[i] < gain) ++i;
    *slope = slopes[i];
    *intercept = intercepts[i];
    if (gain > gains[0] && gain < gains[last]) {
        *slope = (slopes[i] - slopes[i - 1]) * (gain - gains[i - 1]) / (gains[i] - gains[i - 1]) + slopes[i - 1];
        *intercept =
            (intercepts[i] - intercepts[i - 1]) * (gain - gains[i - 1]) / (gains[i] - gains[i - 1]) + intercepts[i - 1];
    }
    return kvx::kStageSuccess;
}
