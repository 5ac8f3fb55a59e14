#include "quality/Cpsnr.h"

#include <cmath>

#include "quality/Ssim.h"

namespace kvx::quality {
namespace {

double Decibels(double meanSquareError) {
    return 10 * std::log10(255.0 * 255.0 / meanSquareError);
}

}  // namespace

Cpsnr Compare(const cv::Mat& original, const cv::Mat& restored, int border) {
    double red = 0, green = 0, blue = 0, luma = 0, blueness = 0, redness = 0;
    const auto add = [](double& squares, double error) { squares += error * error; };
    for (int y = border; y < original.rows - border; ++y)
        for (int x = border; x < original.cols - border; ++x) {
            const cv::Vec3d error = cv::Vec3d(restored.at<cv::Vec3b>(y, x)) - cv::Vec3d(original.at<cv::Vec3b>(y, x));
            const double ofLuma = 0.114 * error[0] + 0.587 * error[1] + 0.299 * error[2];
            add(blue, error[0]);
            add(green, error[1]);
            add(red, error[2]);
            add(luma, ofLuma);
            add(blueness, (error[0] - ofLuma) / 1.772);
            add(redness, (error[2] - ofLuma) / 1.402);
        }
    const double pixels = static_cast<double>(original.rows - 2 * border) * (original.cols - 2 * border);
    return {.colour = Decibels((red + green + blue) / (3 * pixels)),
            .red = Decibels(red / pixels),
            .green = Decibels(green / pixels),
            .blue = Decibels(blue / pixels),
            .luma = Decibels(luma / pixels),
            .chroma = (Decibels(blueness / pixels) + Decibels(redness / pixels)) / 2,
            .ssim = Ssim(original, restored, border)};
}

}  // namespace kvx::quality
