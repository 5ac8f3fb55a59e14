#include "quality/Cpsnr.h"

#include <array>
#include <cmath>
#include <stdexcept>

#include "KvxDemosaicing/KvxDemosaicing.h"

namespace kvx::quality {
namespace {

enum Channel { kBlue, kGreen, kRed };
constexpr Channel kPattern[2][2] = {{kRed, kGreen}, {kGreen, kBlue}};

cv::Mat MosaicOf(const cv::Mat& picture) {
    cv::Mat mosaic(picture.size(), CV_8UC1);
    for (int y = 0; y < picture.rows; ++y)
        for (int x = 0; x < picture.cols; ++x)
            mosaic.at<uint8_t>(y, x) = picture.at<cv::Vec3b>(y, x)[kPattern[y % 2][x % 2]];
    return mosaic;
}

_KvxImage RecordOf(const cv::Mat& image, uint32_t pixelType) {
    _KvxImage record{};
    record.structSize = sizeof record;
    record.structVersion = KVX_IMAGE_VERSION;
    record.pixelType = pixelType;
    record.pixelDepth = 8;
    record.width = static_cast<uint32_t>(image.cols);
    record.height = static_cast<uint32_t>(image.rows);
    record.lineStep = static_cast<uint32_t>(image.step);
    record.imageSize = record.lineStep * record.height;
    record.data = image.data;
    return record;
}

double Decibels(double meanSquareError) {
    return 10 * std::log10(255.0 * 255.0 / meanSquareError);
}

}  // namespace

cv::Mat Restored(const cv::Mat& picture, int algorithm) {
    const cv::Mat mosaic = MosaicOf(picture);
    cv::Mat result(picture.size(), CV_8UC3);
    const _KvxImage src = RecordOf(mosaic, KvxFormat_BayerRG8);
    _KvxImage dst = RecordOf(result, KvxFormat_BGR8);
    if (BayerToColor(&src, &dst, algorithm) != 0) throw std::runtime_error("the conversion was refused");
    return result;
}

Cpsnr Measure(const cv::Mat& picture, int algorithm, int border) {
    const cv::Mat result = Restored(picture, algorithm);
    std::array<double, 3> squares{};
    for (int y = border; y < picture.rows - border; ++y)
        for (int x = border; x < picture.cols - border; ++x)
            for (int channel = 0; channel < 3; ++channel) {
                const int error = result.at<cv::Vec3b>(y, x)[channel] - picture.at<cv::Vec3b>(y, x)[channel];
                squares[static_cast<size_t>(channel)] += error * error;
            }
    const double pixels = static_cast<double>(picture.rows - 2 * border) * (picture.cols - 2 * border);
    return {Decibels((squares[kRed] + squares[kGreen] + squares[kBlue]) / (3 * pixels)),
            Decibels(squares[kRed] / pixels), Decibels(squares[kGreen] / pixels), Decibels(squares[kBlue] / pixels)};
}

}  // namespace kvx::quality
