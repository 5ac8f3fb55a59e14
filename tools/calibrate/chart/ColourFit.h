#pragma once

#include <array>
#include <opencv2/core.hpp>
#include <string>
#include <vector>

#include "KvxFrame/Finish.h"
#include "tools/calibrate/chart/PatchSamples.h"

namespace kvx::tool {

/** Colour differences (CIEDE2000) of the patches; negative for clipped ones, which do not count. */
using PatchErrors = std::array<double, kChartPatches>;

/** A chart's colours as the profile shows them. */
struct ChartResult {
    frame::Gains gains;   ///< that make its own greys grey
    double exposure = 1;  ///< factor that brings the chart to the brightness of its reference
    PatchErrors before;   ///< with its gains only, and its greys as bright as their references
    PatchErrors after;    ///< with the matrix
};

struct ColourFit {
    frame::Gains gains;  ///< the geometric mean of those of the charts; the smallest is 1
    cv::Matx33d matrix;  ///< from balanced sensor colours to linear sRGB; rows sum to 1
    std::vector<ChartResult> charts;
};

/**
 * Gains from the grey patches, and the matrix with the least mean colour difference over the patches of all charts that
 * are not clipped. Each chart has its own gains and exposure: the light may differ. Throws ExitCode::Frame, naming the
 * chart, if too few patches are left to fit: three greys and fifteen patches.
 */
ColourFit FitColours(const std::vector<PatchSamples>& charts, const std::vector<std::string>& names);

/** The mean of the errors that count. */
double MeanError(const PatchErrors& errors);

/** A patch's colour in linear sRGB as the profile shows it. */
LinearRgb Corrected(const LinearRgb& light, const frame::Gains& gains, const cv::Matx33d& matrix, double exposure);

}  // namespace kvx::tool
