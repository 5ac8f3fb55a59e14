#include "tools/calibrate/Flat.h"

#include <algorithm>
#include <cmath>

#include "tools/ToolError.h"
#include "tools/calibrate/Outliers.h"
#include "tools/calibrate/ShadingFit.h"
#include "tools/calibrate/SiteStatistics.h"

namespace kvx::tool {
namespace {

constexpr double kMostClipped = 0.001, kLeastSignal = 0.05;

/** The mean frame without black level and fixed pattern. */
cv::Mat SignalOf(const FrameStack& stack, const frame::CameraProfile& profile) {
    cv::Mat signal = stack.mean.clone();
    if (!profile.darkFrame.empty()) {
        const cv::Mat dark(signal.size(), CV_16U, const_cast<uint16_t*>(profile.darkFrame.data()));
        cv::Mat samples;
        dark.convertTo(samples, CV_32F, 1.0 / (1u << (16 - stack.format.bits)));
        return signal - samples;
    }
    const frame::Levels black = profile.blackLevel.value_or(frame::Levels());
    for (size_t filter = 0; filter < 4; ++filter) {
        cv::subtract(signal, black.ofFilters[filter], signal, SitesOfFilter(stack.format, signal.size(), filter));
    }
    return signal;
}

/** The deviation of the noise of a single frame at each site; of one frame alone only up to a factor. */
cv::Mat NoiseOf(const cv::Mat& signal, const frame::SensorNoise& noise, const frame::Format& format) {
    const double unit = 4095.0 / frame::White(format);
    const cv::Mat clear = ClearSites(format, signal.size());
    cv::Mat deviations = signal.clone();
    deviations.forEach<float>([&](float& value, const int* at) {
        const frame::NoiseLine& line = clear.at<uint8_t>(at[0], at[1]) ? noise.pan : noise.colour;
        value = static_cast<float>(std::max(line.DeviationAt(unit * std::max(value, 0.0F)) / unit, 1e-3));
    });
    return deviations;
}

cv::Mat DefectsOf(const FrameStack& stack, const cv::Mat& signal, const std::optional<frame::SensorNoise>& noise) {
    const cv::Mat surroundings = LocalMedian(signal, stack.format);
    const cv::Mat residuals = (signal - surroundings) /
                              NoiseOf(surroundings, noise.value_or(frame::SensorNoise{{1, 0}, {1, 0}}), stack.format);
    const double deviation = ClippedDeviation(residuals, cv::Mat(signal.size(), CV_8U, cv::Scalar(255)));
    return cv::abs(residuals) > std::max(kOutlier * deviation, noise ? kDefect : 0);
}

}  // namespace

FlatFigures CalibrateFlat(const FrameStack& stack, const PairNoise& pairs, frame::CameraProfile& profile) {
    constexpr int kLeastSide = 48;  // for the quadratic surfaces of the shading
    if (std::min(stack.mean.cols, stack.mean.rows) < kLeastSide) {
        Fail(ExitCode::Frame, "flat frames of {}x{}: give at least {} pixels in both directions", stack.mean.cols,
             stack.mean.rows, kLeastSide);
    }
    const double white = frame::White(stack.format);
    if (stack.clippedShare > kMostClipped) {
        Fail(ExitCode::Frame, "{:.1f} % of the samples are clipped: expose flat frames to half of white",
             100 * stack.clippedShare);
    }
    const cv::Mat signal = SignalOf(stack, profile);
    FlatFigures figures{cv::mean(signal)[0] / white, false};
    if (figures.signal < kLeastSignal) {
        Fail(ExitCode::Frame, "the frames have {:.1f} % of white: expose flat frames to half of white",
             100 * figures.signal);
    }

    const auto known = [&](double intercept) { return profile.noise ? std::optional(intercept) : std::nullopt; };
    const frame::SensorNoise dark = profile.noise.value_or(frame::SensorNoise{});
    const auto pan = pairs.Line(true, known(dark.pan.intercept)),
               colour = pairs.Line(false, known(dark.colour.intercept));
    std::optional<frame::SensorNoise> noise;
    if (pan || colour) {
        noise = frame::SensorNoise{pan ? *pan : *colour, colour ? *colour : *pan};
        profile.noise = noise;
        figures.hasNoise = true;
    }

    cv::Mat hot = cv::Mat::zeros(signal.size(), CV_8U);
    for (const frame::Site& site : profile.hotPixels) {
        hot.at<uint8_t>(static_cast<int>(site.row), static_cast<int>(site.column)) = 255;
    }
    const cv::Mat defects = DefectsOf(stack, signal, noise) & ~hot, good = ~(defects | hot);
    profile.deadPixels = SitesOf(defects);
    profile.shading = FitShading(signal, good, stack.format);
    return figures;
}

}  // namespace kvx::tool
