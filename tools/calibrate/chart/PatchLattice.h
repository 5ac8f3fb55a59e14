#pragma once

#include <opencv2/core.hpp>
#include <vector>

#include "tools/calibrate/chart/FlatRegions.h"

namespace kvx::tool {

/** Regions that lie on a grid in perspective. */
struct PatchLattice {
    std::vector<cv::Point> nodes;  ///< grid positions, column and row, with a region close to the expected place
    cv::Matx33d toImage;           ///< from grid positions to the image
};

/** The grids of at least `leastNodes` regions of similar size. */
std::vector<PatchLattice> FindLattices(const std::vector<FlatRegion>& regions, size_t leastNodes);

}  // namespace kvx::tool
