#pragma once

#include <array>
#include <opencv2/core.hpp>
#include <string>

#include "KvxFrame/CameraProfile.h"
#include "tools/calibrate/chart/ChartPatches.h"
#include "tools/files/RawFrame.h"

namespace kvx::tool {

/** What the sensor saw of a patch: means of the samples in its middle, above black, from 0 to 1 for white. */
struct PatchSample {
    LinearRgb light;         ///< behind red, green and blue filters, not balanced
    bool isClipped = false;  ///< some samples are white: the means are too small
};

/** Half the side of the measured part of a patch, in distances between patches: half of it, without blurred edges. */
inline constexpr double kMeasuredReach = 0.22;

using PatchSamples = std::array<PatchSample, kChartPatches>;

/**
 * Measures the patches of a chart in the mosaic itself, so that no interpolation mixes them. Throws ExitCode::Frame if
 * a patch is outside the frame or too small to have samples of every colour.
 *
 * @param light   see LightOf()
 * @param toFrame from places on the chart, see PatchCentre(), to pixels of the frame
 */
PatchSamples MeasurePatches(const RawFrame& light, const cv::Matx33d& toFrame, const std::string& name);

}  // namespace kvx::tool
