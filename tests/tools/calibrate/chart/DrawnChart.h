#pragma once

#include <algorithm>
#include <utility>

#include "tools/calibrate/chart/ChartDetector.h"
#include "tools/calibrate/chart/ChartPatches.h"
#include "tools/calibrate/chart/Homography.h"
#include "tools/scene/ChartScene.h"

namespace kvx::tool {

struct DrawnChart : ChartScene {
    explicit DrawnChart(const std::vector<cv::Point2f>& corners) : ChartScene(DrawChartScene(corners, {640, 480})) {}

    /** The largest distance between true and found centres of patches, in distances between patches. */
    double Error(const cv::Matx33d& found) const {
        double worst = 0;
        for (int patch = 0; patch < kChartPatches; ++patch) {
            const cv::Point2d place = Projected(toScene.inv(), Projected(found, PatchCentre(patch)));
            worst = std::max(worst, cv::norm(place - PatchCentre(patch)));
        }
        return worst;
    }
};

}  // namespace kvx::tool
