#pragma once

#include <array>
#include <opencv2/core.hpp>
#include <string_view>

#include "tools/calibrate/chart/LabColour.h"

namespace kvx::tool {

/** A patch of the chart: its usual name, and its colour under D65. */
struct ChartPatch {
    std::string_view name;
    Lab lab;
    LinearRgb linear;  ///< the same colour
};

inline constexpr int kChartColumns = 6;
inline constexpr int kChartRows = 4;
inline constexpr int kChartPatches = kChartColumns * kChartRows;

/** The greys between white, which clips easily and is yellowish, and black, which has little light. */
inline constexpr std::array<int, 4> kGreyPatches = {19, 20, 21, 22};

/** The side of a patch, measured in distances between patches. */
inline constexpr double kPatchSide = 0.86;

/** The patches row by row, from dark skin to black. */
const std::array<ChartPatch, kChartPatches>& ChartPatches();

/** The place of a patch: centres are one apart, the first one is (0, 0). */
inline cv::Point2d PatchCentre(int patch) {
    const int row = patch / kChartColumns, column = patch % kChartColumns;
    return cv::Point(column, row);
}

}  // namespace kvx::tool
