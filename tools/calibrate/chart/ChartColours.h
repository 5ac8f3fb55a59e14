#pragma once

#include <array>

#include "tools/calibrate/chart/ChartPatches.h"

namespace kvx::tool {

/** Colours of the 24 patches as a sensor sees them: red, green and blue light from 0, in any unit, not balanced. */
using PatchColours = std::array<cv::Vec3d, kChartPatches>;

/**
 * How well colours could be those of the chart, in this order of patches: 1 for the chart itself, about 0.2 for other
 * colours, 0 where the brightness contradicts it. It compares ratios of the three colours, up to an affine map of their
 * logarithms, so that neither the light, nor the sensor, nor a shadow over a part of the chart changes much.
 */
double ChartAgreement(const PatchColours& colours);

}  // namespace kvx::tool
