#include "support/Frames.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace kvx::bench {
namespace {

cv::Mat Draw(const Size& size) {
    cv::Mat frame(size.height, size.width, CV_16UC1);
    unsigned random = 1;
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x) {
            random = random * 1664525 + 1013904223;
            const double wave = 0.5 + 0.3 * std::sin(x * x * 2e-5 + y * 0.05) * std::cos(y * y * 1e-5);
            const double colour = (x + y) % 2 == 0 ? (y % 2 ? 0.7 : 0.9) : 1.0;
            const double edge = (x / 97 + y / 61) % 2 ? 0.2 : 0.0;
            const double value = wave * colour + edge * 0.5 + (random >> 24) / 256.0 * 0.02;
            frame.at<uint16_t>(y, x) = static_cast<uint16_t>(std::min(value, 1.0) * 65535);
        }
    return frame;
}

}  // namespace

cv::Mat DrawnFrame(const Size& size, int depth) {
    static std::map<std::pair<int, int>, cv::Mat> drawn;  // drawing takes longer than many benchmarks
    cv::Mat& words = drawn[{size.width, size.height}];
    if (words.empty()) words = Draw(size);
    cv::Mat frame;
    words.convertTo(frame, depth == 8 ? CV_8U : CV_16U, ((1 << depth) - 1) / 65535.0);
    return frame;
}

cv::Mat RandomFrame(const Size& size, int depth, int paddingPixels) {
    cv::Mat frame(size.height, size.width + paddingPixels, depth == 8 ? CV_8UC1 : CV_16UC1);
    cv::RNG random(1);
    random.fill(frame, cv::RNG::UNIFORM, 0, 1 << depth);
    return frame.colRange(0, size.width);
}

cv::Mat BlackImage(const Size& size, int sampleBytes, int paddingPixels) {
    const int type = sampleBytes == 1 ? CV_8UC3 : CV_16UC3;
    return cv::Mat(size.height, size.width + paddingPixels, type, cv::Scalar::all(0)).colRange(0, size.width);
}

}  // namespace kvx::bench
