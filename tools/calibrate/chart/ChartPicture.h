#pragma once

#include <opencv2/core.hpp>
#include <string>
#include <vector>

#include "tools/calibrate/chart/ColourFit.h"

namespace kvx::tool {

/** What the picture shows of a frame. */
struct FoundChart {
    std::string name;            ///< of the frame
    cv::Mat_<cv::Vec3f> linear;  ///< the frame, see LinearPicture()
    cv::Matx33d toFrame;         ///< the chart's place, see ChartPlace
    PatchSamples samples;
};

/**
 * A sheet with a row for each chart: the frame in the colours of the fit, with the outline of what was found; the chart
 * enlarged, with the measured squares; the patches (left halves) next to their references, with their errors.
 */
cv::Mat DrawCharts(const std::vector<FoundChart>& charts, const ColourFit& fit);

}  // namespace kvx::tool
