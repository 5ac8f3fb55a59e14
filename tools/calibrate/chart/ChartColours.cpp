#include "tools/calibrate/chart/ChartColours.h"

#include <algorithm>
#include <cmath>

namespace kvx::tool {
namespace {

/** Added to all light, with white at 1: ratios of nearly no light mean nothing. */
constexpr double kDark = 0.02;
/** Least correlation of the logarithms of green light: a shadow over a part of the chart lowers it. */
constexpr double kLeastBrightnessMatch = 0.5;

struct LogColour {
    double green, redRatio, blueRatio;
};

using LogColours = std::array<LogColour, kChartPatches>;

LogColours LogColoursOf(const PatchColours& colours, const cv::Vec3d& scale) {
    LogColours logs;
    for (int i = 0; i < kChartPatches; ++i) {
        const auto level = [&](int channel) {
            return std::log(std::max(colours[i][channel] * scale[channel], 0.0) + kDark);
        };
        logs[i] = {level(1), level(0) - level(1), level(2) - level(1)};
    }
    return logs;
}

cv::Vec3d Sum(const PatchColours& colours) {
    cv::Vec3d sum;
    for (const cv::Vec3d& colour : colours) {
        sum += colour;
    }
    return sum;
}

PatchColours ReferenceColours() {
    PatchColours colours;
    for (int i = 0; i < kChartPatches; ++i) {
        colours[i] = ChartPatches()[i].linear;
    }
    return colours;
}

double BrightnessMatch(const LogColours& seen, const LogColours& reference) {
    cv::Matx<double, kChartPatches, 1> first, second;
    for (int i = 0; i < kChartPatches; ++i) {
        first(i) = seen[i].green;
        second(i) = reference[i].green;
    }
    first -= cv::Matx<double, kChartPatches, 1>::all(cv::sum(first)[0] / kChartPatches);
    second -= cv::Matx<double, kChartPatches, 1>::all(cv::sum(second)[0] / kChartPatches);
    return first.dot(second) / std::max(cv::norm(first) * cv::norm(second), 1e-12);
}

/** Share of the reference's variance that the best affine map of the seen ratios explains. */
double RatioMatch(const LogColours& seen, const LogColours& reference) {
    cv::Matx<double, kChartPatches, 3> from;
    cv::Matx<double, kChartPatches, 2> to;
    for (int i = 0; i < kChartPatches; ++i) {
        from(i, 0) = seen[i].redRatio;
        from(i, 1) = seen[i].blueRatio;
        from(i, 2) = 1;
        to(i, 0) = reference[i].redRatio;
        to(i, 1) = reference[i].blueRatio;
    }
    const auto map = from.solve(to, cv::DECOMP_SVD);
    cv::Matx<double, 1, 2> mean = cv::Matx<double, 1, kChartPatches>::all(1.0 / kChartPatches) * to;
    const auto centred = to - cv::Matx<double, kChartPatches, 1>::all(1) * mean;
    // Nearly grey colours must not be stretched until they fit.
    constexpr double kMostStretch = 5;
    const double stretch = cv::norm(map.get_minor<2, 2>(0, 0));
    return stretch > kMostStretch ? 0 : 1 - std::pow(cv::norm(to - from * map) / cv::norm(centred), 2);
}

}  // namespace

double ChartAgreement(const PatchColours& colours) {
    static const PatchColours reference = ReferenceColours();
    static const LogColours referenceLogs = LogColoursOf(reference, cv::Vec3d::all(1));
    const cv::Vec3d sum = Sum(colours);
    if (std::min({sum[0], sum[1], sum[2]}) <= 0) {
        return 0;
    }
    cv::Vec3d scale = Sum(reference);
    for (int channel = 0; channel < 3; ++channel) {
        scale[channel] /= sum[channel];
    }
    const LogColours seen = LogColoursOf(colours, scale);
    return BrightnessMatch(seen, referenceLogs) < kLeastBrightnessMatch ? 0 : RatioMatch(seen, referenceLogs);
}

}  // namespace kvx::tool
