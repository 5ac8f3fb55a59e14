#pragma once

#include <array>
#include <nlohmann/json_fwd.hpp>
#include <opencv2/core.hpp>
#include <optional>

#include "tools/tune/TunedConversion.h"

namespace kvx::tool {

/**
 * What `calibrate chart` would make of the frame with the levels and the camera of a conversion: {"corners", "gains",
 * "matrix", "before", "after", "patches": [{"name", "before", "after"}, ...]}; null for the error of a clipped patch.
 *
 * @param corners of the patches, in pixels of the frame; without them the chart is searched
 * Throws ExitCode::Frame if there is no chart, or none at these corners.
 */
nlohmann::ordered_json FitChart(const TunedConversion& conversion,
                                const std::optional<std::array<cv::Point2d, 4>>& corners);

}  // namespace kvx::tool
