#include "tools/calibrate/Dark.h"

#include <algorithm>
#include <cmath>

#include "tools/ToolError.h"
#include "tools/calibrate/Outliers.h"
#include "tools/calibrate/SiteStatistics.h"

namespace kvx::tool {
namespace {

/** A pattern below this share of the noise cannot be seen. */
constexpr double kVisiblePattern = 0.25;

double MeanOf(const cv::Mat& map, const cv::Mat& mask) {
    return cv::mean(map, mask)[0];
}

/** The variance of the noise at some sites, in squares of 12-bit values. */
double Intercept(const FrameStack& stack, const cv::Mat& residuals, const cv::Mat& sites) {
    const double unit = 4095.0 / frame::White(stack.format);
    const double variance =
        stack.count > 1 ? MeanOf(stack.variance, sites) : std::pow(ClippedDeviation(residuals, sites), 2);
    return variance * unit * unit;
}

std::vector<uint16_t> WideSamples(const cv::Mat& mean, uint8_t bits) {
    cv::Mat wide;
    mean.convertTo(wide, CV_16U, 1u << (16 - bits));
    return {wide.begin<uint16_t>(), wide.end<uint16_t>()};
}

}  // namespace

DarkFigures CalibrateDark(const FrameStack& stack, frame::CameraProfile& profile) {
    constexpr double kMostLight = 0.25;
    const cv::Size size = stack.mean.size();
    const double level = cv::mean(stack.mean)[0] / frame::White(stack.format);
    if (level > kMostLight) {
        Fail(ExitCode::Frame, "the frames have {:.0f} % of white: dark frames are those without light", 100 * level);
    }
    const cv::Mat residuals = stack.mean - LocalMedian(stack.mean, stack.format);
    const cv::Mat everywhere(size, CV_8U, cv::Scalar(255));
    DarkFigures figures;
    const double deviation = ClippedDeviation(residuals, everywhere);  // of the mean: noise and pattern
    figures.noise =
        stack.count > 1 ? std::sqrt(MeanOf(stack.variance, cv::abs(residuals) <= kOutlier * deviation)) : deviation;
    constexpr double kOneStep = 1;  // samples are whole numbers, however small the noise is
    const cv::Mat hot =
        residuals > std::max({kOutlier * deviation, stack.count > 1 ? kDefect * figures.noise : 0, kOneStep});
    const cv::Mat good = ~hot;

    cv::Mat pattern = stack.mean.clone();  // above the black level
    for (size_t filter = 0; filter < 4; ++filter) {
        const cv::Mat sites = SitesOfFilter(stack.format, size, filter) & good;
        figures.blackLevel.ofFilters[filter] = std::round(1000 * MeanOf(stack.mean, sites)) / 1000;
        cv::subtract(pattern, figures.blackLevel.ofFilters[filter], pattern, sites);
    }
    if (stack.format.family == frame::Family::Mono) figures.blackLevel = figures.blackLevel.ofFilters[3];
    if (stack.count > 1) {
        const double noiseOfMean = figures.noise * figures.noise / stack.count;
        const double variance = std::pow(ClippedDeviation(pattern, good), 2) - noiseOfMean;
        figures.pattern = std::sqrt(std::max(variance, 0.0));
        figures.keepsPattern = figures.pattern > kVisiblePattern * figures.noise && variance > noiseOfMean;
    }

    profile.blackLevel = figures.blackLevel;
    frame::SensorNoise noise = profile.noise.value_or(frame::SensorNoise{});
    const cv::Mat clear = ClearSites(stack.format, size), coloured = ~clear;
    const bool hasClear = cv::countNonZero(clear) > 0, hasColours = cv::countNonZero(coloured) > 0;
    noise.colour.intercept = Intercept(stack, residuals, (hasColours ? coloured : clear) & good);
    noise.pan.intercept = Intercept(stack, residuals, (hasClear ? clear : coloured) & good);
    profile.noise = noise;
    profile.hotPixels = SitesOf(hot);
    profile.darkFrame = figures.keepsPattern ? WideSamples(stack.mean, stack.format.bits) : std::vector<uint16_t>();
    return figures;
}

}  // namespace kvx::tool
