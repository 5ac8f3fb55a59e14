#include "pipeline/LogText.h"

int32_t Alg_CalculateNoiseParameter(float gain, const float gains[5], const float slopes[5], const float intercepts[5],
                                    float* slope, float* intercept, LogText_t*) noexcept {
    constexpr int last = 4;
    const int end = gain >= gains[last] && gain > gains[0] ? last : 0;
    *slope = slopes[end];
    *intercept = intercepts[end];
    if (gain > gains[0] && gain < gains[last]) {
        int i = 1;
        while (gains[i] < gain) ++i;
        *slope = (slopes[i] - slopes[i - 1]) * (gain - gains[i - 1]) / (gains[i] - gains[i - 1]) + slopes[i - 1];
        *intercept =
            (intercepts[i] - intercepts[i - 1]) * (gain - gains[i - 1]) / (gains[i] - gains[i - 1]) + intercepts[i - 1];
    }
    return kvx::kStageSuccess;
}
