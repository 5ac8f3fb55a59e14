#include "tools/look/Continuity.h"

#include <algorithm>
#include <array>
#include <opencv2/imgproc.hpp>

namespace kvx::tool {
namespace {

/** The mean difference of any two samples, from their distribution. */
double MeanDifference(const cv::Mat& samples) {
    constexpr int kValues = 1 << 16;
    cv::Mat words;
    samples.convertTo(words, CV_16U);
    cv::Mat counts;
    const std::array<float, 2> range = {0, kValues};
    const float* ranges = range.data();
    cv::calcHist(&words, 1, std::array{0}.data(), cv::noArray(), counts, 1, &kValues, &ranges);
    double below = 0;
    double difference = 0;
    for (int value = 0; value < kValues; ++value) {
        below += counts.at<float>(value) / static_cast<double>(words.total());
        difference += 2 * below * (1 - below);
    }
    return difference;
}

}  // namespace

double Continuity(const cv::Mat& samples) {
    constexpr int kRows = 512;
    constexpr std::array kLags = {2, 4};
    const int first = std::max(0, (samples.rows - kRows) / 2);
    const cv::Mat middle = samples.rowRange(first, std::min(samples.rows, first + kRows));
    const double far = MeanDifference(middle);
    if (std::min(middle.rows, middle.cols) <= kLags.back() || far == 0) {
        return 0;
    }
    double near = 0;
    for (const int lag : kLags) {
        const cv::Mat upper = middle.rowRange(0, middle.rows - lag);
        const cv::Mat left = middle.colRange(0, middle.cols - lag);
        near += cv::norm(upper, middle.rowRange(lag, middle.rows), cv::NORM_L1) / static_cast<double>(upper.total());
        near += cv::norm(left, middle.colRange(lag, middle.cols), cv::NORM_L1) / static_cast<double>(left.total());
    }
    return 1 - near / (2 * kLags.size()) / far;
}

}  // namespace kvx::tool
