#include "support/DrawnFrame.h"

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
    static std::map<std::pair<int, int>, cv::Mat> drawn;  // drawing takes longer than many a benchmark
    cv::Mat& words = drawn[{size.width, size.height}];
    if (words.empty()) words = Draw(size);
    cv::Mat frame;
    words.convertTo(frame, depth == 8 ? CV_8U : CV_16U, ((1 << depth) - 1) / 65535.0);
    return frame;
}

}  // namespace kvx::bench
