#include "tools/Mosaic.h"

#include <opencv2/imgproc.hpp>

#include "tools/FilterTile.h"
#include "tools/SampleScale.h"

namespace kvx::tool {
namespace {

/** The picture as blue, green and red words, values unchanged. */
cv::Mat AsColourWords(const cv::Mat& pixels) {
    cv::Mat words;
    pixels.convertTo(words, CV_16U);
    if (words.channels() == 1) {
        cv::cvtColor(words, words, cv::COLOR_GRAY2BGR);
    }
    return words;
}

/** One sample behind the filter `letter`, scaled from the picture's white to the format's. */
uint16_t FilteredSample(const cv::Vec3w& pixel, char letter, uint64_t white, uint64_t newWhite) {
    switch (letter) {
        case 'B':
            return static_cast<uint16_t>(ScaleSample(pixel[0], white, newWhite));
        case 'G':
            return static_cast<uint16_t>(ScaleSample(pixel[1], white, newWhite));
        case 'R':
            return static_cast<uint16_t>(ScaleSample(pixel[2], white, newWhite));
        default:
            return static_cast<uint16_t>(ScaleSample(pixel[0] + pixel[1] + pixel[2], 3 * white, newWhite));
    }
}

}  // namespace

RawFrame MakeMosaic(const Picture& picture, const PixelFormat& format) {
    const cv::Mat words = AsColourWords(picture.pixels);
    const FilterTile tile(format);
    cv::Mat samples(words.size(), CV_16UC1);
#pragma omp parallel for
    for (int row = 0; row < words.rows; ++row) {
        const auto* pixels = words.ptr<cv::Vec3w>(row);
        auto* out = samples.ptr<uint16_t>(row);
        for (int column = 0; column < words.cols; ++column) {
            out[column] = FilteredSample(pixels[column], tile.At(row, column), picture.maximum, LargestSample(format));
        }
    }
    if (BytesPerSample(format) == 1) {
        samples.convertTo(samples, CV_8U);
    }
    return {&format, samples};
}

}  // namespace kvx::tool
