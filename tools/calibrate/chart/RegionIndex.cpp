#include "tools/calibrate/chart/RegionIndex.h"

#include <cmath>

namespace kvx::tool {
namespace {

constexpr double kCellSide = 16;

int CellOf(double coordinate) {
    return static_cast<int>(std::floor(coordinate / kCellSide));
}

}  // namespace

RegionIndex::RegionIndex(const std::vector<FlatRegion>& regions) : m_regions(regions) {
    for (size_t i = 0; i < regions.size(); ++i) {
        m_cells[Key(CellOf(regions[i].centre.x), CellOf(regions[i].centre.y))].push_back(static_cast<int>(i));
    }
}

template <typename Action>
void RegionIndex::ForEach(cv::Point2d place, double distance, const Action& action) const {
    for (int row = CellOf(place.y - distance); row <= CellOf(place.y + distance); ++row) {
        for (int column = CellOf(place.x - distance); column <= CellOf(place.x + distance); ++column) {
            const auto cell = m_cells.find(Key(column, row));
            if (cell == m_cells.end()) {
                continue;
            }
            for (const int region : cell->second) {
                if (const double away = cv::norm(m_regions[region].centre - place); away <= distance) {
                    action(region, away);
                }
            }
        }
    }
}

std::vector<int> RegionIndex::Within(cv::Point2d place, double distance) const {
    std::vector<int> found;
    ForEach(place, distance, [&](int region, double) { found.push_back(region); });
    return found;
}

int RegionIndex::Nearest(cv::Point2d place, double distance) const {
    int nearest = -1;
    double least = distance;
    ForEach(place, distance, [&](int region, double away) {
        if (away <= least) {
            nearest = region;
            least = away;
        }
    });
    return nearest;
}

}  // namespace kvx::tool
