#pragma once

#include <opencv2/core.hpp>
#include <vector>

#include "tools/calibrate/chart/SearchImage.h"

namespace kvx::tool {

/** A region of one colour that could be a patch. */
struct FlatRegion {
    cv::Point2d centre;
    double side;  ///< of a square with its area
};

/**
 * Regions with the shape of a parallelogram in which neighbouring pixels differ little. They are found at several
 * tolerances, in ratios of light, so that a dark or shaded patch counts as much as a bright one.
 */
std::vector<FlatRegion> FindFlatRegions(const SearchImage& image);

}  // namespace kvx::tool
