#pragma once

#include <opencv2/core.hpp>
#include <unordered_map>
#include <vector>

#include "tools/calibrate/chart/FlatRegions.h"

namespace kvx::tool {

/** Finds regions by their place. */
class RegionIndex {
public:
    /** The regions must outlive the index. */
    explicit RegionIndex(const std::vector<FlatRegion>& regions);

    /** Numbers of the regions whose centres are at most this far away. */
    std::vector<int> Within(cv::Point2d place, double distance) const;

    /** The nearest of them, or -1. */
    int Nearest(cv::Point2d place, double distance) const;

private:
    static int64_t Key(int column, int row) {
        return static_cast<int64_t>(row) * INT32_MAX + column;
    }
    template <typename Action>
    void ForEach(cv::Point2d place, double distance, const Action& action) const;

    const std::vector<FlatRegion>& m_regions;
    std::unordered_map<int64_t, std::vector<int>> m_cells;
};

}  // namespace kvx::tool
