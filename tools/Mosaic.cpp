#include "tools/Mosaic.h"

#include <cmath>
#include <opencv2/imgproc.hpp>
#include <vector>

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

/** Light behind a picture's samples, from 0 for black to 1 for white. */
class LightTable {
public:
    LightTable(uint32_t white, bool isLinear) : m_light(size_t{white} + 1) {
        for (size_t sample = 0; sample < m_light.size(); ++sample) {
            const double share = static_cast<double>(sample) / white;
            m_light[sample] = isLinear ? Decoded(share) : share;
        }
    }
    double operator()(uint16_t sample) const {
        return m_light[sample];
    }

private:
    /** The sRGB curve of IEC 61966-2-1. */
    static double Decoded(double share) {
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    }

    std::vector<double> m_light;
};

/** Shares of blue, green and red, in the order of a pixel, behind the filter at each site of a mosaic. */
class Filters {
public:
    Filters(const frame::Format& format, const std::array<double, 3>& panWeights) {
        const double sum = panWeights[0] + panWeights[1] + panWeights[2];
        const cv::Vec3d clear(panWeights[2] / sum, panWeights[1] / sum, panWeights[0] / sum);
        for (uint32_t row = 0; row < kSide; ++row) {
            for (uint32_t column = 0; column < kSide; ++column) {
                m_shares[row * kSide + column] = Behind(frame::FilterAt(format, row, column), clear);
            }
        }
    }
    const cv::Vec3d& At(uint32_t row, uint32_t column) const {
        return m_shares[row % kSide * kSide + column % kSide];
    }

private:
    static constexpr uint32_t kSide = 4;  // of the largest tile, and a multiple of the others'

    static cv::Vec3d Behind(char letter, const cv::Vec3d& clear) {
        switch (letter) {
            case 'B':
                return {1, 0, 0};
            case 'G':
                return {0, 1, 0};
            case 'R':
                return {0, 0, 1};
            default:
                return clear;
        }
    }

    std::array<cv::Vec3d, kSide * kSide> m_shares;
};

/** Halves go up; shares such as 1/3 may leave a half a hair short of it. */
uint16_t RoundedSample(double sample) {
    constexpr double kHair = 1e-7;
    return static_cast<uint16_t>(std::floor(sample + 0.5 + kHair));
}

}  // namespace

RawFrame MakeMosaic(const Picture& picture, const frame::Format& format, const Sensor& sensor) {
    const cv::Mat words = AsColourWords(picture.pixels);
    const Filters filters(format, sensor.panWeights);
    const LightTable light(picture.maximum, sensor.isLinear);
    const double white = frame::White(format);
    cv::Mat samples(words.size(), CV_16UC1);
#pragma omp parallel for
    for (int row = 0; row < words.rows; ++row) {
        const auto* pixels = words.ptr<cv::Vec3w>(row);
        auto* out = samples.ptr<uint16_t>(row);
        for (int column = 0; column < words.cols; ++column) {
            const cv::Vec3w& pixel = pixels[column];
            const cv::Vec3d colours(light(pixel[0]), light(pixel[1]), light(pixel[2]));
            out[column] = RoundedSample(white * colours.dot(filters.At(row, column)));
        }
    }
    if (format.bits == 8) {
        samples.convertTo(samples, CV_8U);
    }
    return {frame::Unpacked(format), samples};
}

}  // namespace kvx::tool
