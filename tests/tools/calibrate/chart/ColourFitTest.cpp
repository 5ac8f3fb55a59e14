#include "tools/calibrate/chart/ColourFit.h"

#include <gtest/gtest.h>

#include "ExpectToolError.h"

namespace kvx::tool {
namespace {

const cv::Matx33d kMatrix(1.7, -0.6, -0.1, -0.4, 1.6, -0.2, 0.1, -0.7, 1.6);

/** What a sensor with that matrix sees of the chart. */
PatchSamples SeenBy(const cv::Vec3d& gains, double exposure) {
    PatchSamples samples;
    for (int patch = 0; patch < kChartPatches; ++patch) {
        const LinearRgb light = kMatrix.inv() * ChartPatches()[patch].linear * exposure;
        samples[patch].light = {light[0] / gains[0], light[1] / gains[1], light[2] / gains[2]};
    }
    return samples;
}

TEST(ColourFit, FindsPlantedGainsAndMatrixInEachLight) {
    std::vector<PatchSamples> charts = {SeenBy({1.3, 1, 3.1}, 0.4), SeenBy({2.2, 1, 1.6}, 0.8)};
    for (const int patch : {18, 15}) {  // bright ones clip
        charts[1][patch] = {{1, 1, 1}, true};
    }
    const ColourFit fit = FitColours(charts, {"warm", "cool"});
    // The greys of the chart are a little greenish.
    EXPECT_LT(cv::norm(fit.matrix - kMatrix, cv::NORM_INF), 0.05) << fit.matrix;
    EXPECT_NEAR(fit.charts[0].gains.blue / fit.charts[0].gains.red, 3.1 / 1.3, 0.05);
    EXPECT_NEAR(fit.charts[1].gains.red / fit.charts[1].gains.green, 2.2, 0.05);
    EXPECT_NEAR(fit.gains.red / fit.gains.green, std::sqrt(1.3 * 2.2), 0.05);
    for (const ChartResult& chart : fit.charts) {
        EXPECT_GT(MeanError(chart.before), 5);
        EXPECT_LT(MeanError(chart.after), 1);
    }
    EXPECT_NEAR(fit.charts[1].exposure, 1 / 0.8, 0.05);
    EXPECT_LT(fit.charts[1].after[15], 0);
}

TEST(ColourFit, RefusesChartsWithoutGreysOrWithFewPatches) {
    PatchSamples greys = SeenBy({1, 1, 1}, 1);
    greys[19].isClipped = greys[20].isClipped = true;
    PatchSamples few = SeenBy({1, 1, 1}, 1);
    for (int patch = 0; patch < 10; ++patch) {
        few[patch].isClipped = true;
    }
    ExpectToolError(ExitCode::Frame, "chart.raw: the grey patches", [&] { FitColours({greys}, {"chart.raw"}); });
    ExpectToolError(ExitCode::Frame, "chart.raw: 10 of 24 patches", [&] { FitColours({few}, {"chart.raw"}); });
}

}  // namespace
}  // namespace kvx::tool
