#include "quality/Ssim.h"

#include <opencv2/imgproc.hpp>

namespace kvx::quality {
namespace {

cv::Mat LumaOf(const cv::Mat& picture) {
    cv::Mat grey, real;
    cv::cvtColor(picture, grey, cv::COLOR_BGR2GRAY);
    grey.convertTo(real, CV_64F);
    return real;
}

/** Weighted means of the window around each site. */
cv::Mat Means(const cv::Mat& values) {
    cv::Mat means;
    cv::GaussianBlur(values, means, cv::Size(11, 11), 1.5);
    return means;
}

}  // namespace

double Ssim(const cv::Mat& original, const cv::Mat& restored, int border) {
    const double forMeans = (0.01 * 255) * (0.01 * 255), forVariances = (0.03 * 255) * (0.03 * 255);
    const cv::Mat a = LumaOf(original), b = LumaOf(restored);
    const cv::Mat meanA = Means(a), meanB = Means(b);
    const cv::Mat product = meanA.mul(meanB), squares = meanA.mul(meanA) + meanB.mul(meanB);
    const cv::Mat covariance = Means(a.mul(b)) - product, variances = Means(a.mul(a) + b.mul(b)) - squares;
    const cv::Mat similarity = ((2 * product + forMeans).mul(2 * covariance + forVariances)) /
                               ((squares + forMeans).mul(variances + forVariances));
    const cv::Rect inner(border, border, original.cols - 2 * border, original.rows - 2 * border);
    return cv::mean(similarity(inner))[0];
}

}  // namespace kvx::quality
