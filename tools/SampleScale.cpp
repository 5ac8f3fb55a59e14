#include "tools/SampleScale.h"

namespace kvx::tool {

void StretchToWhite(cv::Mat& picture, uint32_t white) {
    constexpr uint32_t kFileWhite = 65535;
    if (white == kFileWhite) {
        return;
    }
    const int samplesPerRow = picture.cols * picture.channels();
#pragma omp parallel for
    for (int row = 0; row < picture.rows; ++row) {
        auto* sample = picture.ptr<uint16_t>(row);
        for (int index = 0; index < samplesPerRow; ++index) {
            sample[index] = static_cast<uint16_t>(ScaleSample(sample[index], white, kFileWhite));
        }
    }
}

}  // namespace kvx::tool
