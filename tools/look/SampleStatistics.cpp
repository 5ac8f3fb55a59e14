#include "tools/look/SampleStatistics.h"

#include <algorithm>
#include <bit>

namespace kvx::tool {

SampleStatistics MeasureSamples(const RawFrame& frame) {
    const uint32_t white = frame::White(frame.format);
    uint32_t smallest = UINT16_MAX;
    uint32_t largest = 0;
    uint32_t bits = 0;
    uint64_t sum = 0;
    uint64_t clipped = 0;
    uint64_t black = 0;
    cv::Mat words;
    for (int row = 0; row < frame.samples.rows; ++row) {
        frame.samples.row(row).convertTo(words, CV_16U);
        for (const uint16_t sample : cv::Mat_<uint16_t>(words)) {
            smallest = std::min<uint32_t>(smallest, sample);
            largest = std::max<uint32_t>(largest, sample);
            bits |= sample;
            sum += sample;
            clipped += sample >= white ? 1 : 0;
            black += sample == 0 ? 1 : 0;
        }
    }
    const auto total = static_cast<double>(frame.samples.total());
    return {smallest,
            largest,
            static_cast<double>(sum) / total,
            static_cast<unsigned>(std::bit_width(bits)),
            bits == 0 ? 0u : static_cast<unsigned>(std::countr_zero(bits)),
            static_cast<double>(clipped) / total,
            static_cast<double>(black) / total};
}

uint8_t BitsUsed(const cv::Mat& samples) {
    if (samples.depth() == CV_8U) {
        return 8;
    }
    double largest = 0;
    cv::minMaxLoc(samples, nullptr, &largest);
    uint8_t bits = 10;
    while (bits < 16 && largest > (1u << bits) - 1) {
        bits += 2;
    }
    return bits;
}

}  // namespace kvx::tool
