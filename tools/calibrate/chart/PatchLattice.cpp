#include "tools/calibrate/chart/PatchLattice.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <opencv2/imgproc.hpp>

#include "tools/calibrate/chart/Homography.h"
#include "tools/calibrate/chart/RegionIndex.h"

namespace kvx::tool {
namespace {

/** Distance to the next patch, in sides of a region: blurred edges make small regions smaller. */
constexpr double kNearest = 0.95;
constexpr double kFarthest = 2.8;
constexpr size_t kNeighbours = 10;
/** How far a region may be from its expected place, in distances between patches. */
constexpr double kTolerance = 0.28;
/** Ratio of the sides of neighbours. */
constexpr double kSideRatio = 1.6;
/** Least sine of the angle between the directions of a grid, and largest ratio of their steps. */
constexpr double kLeastSine = 0.5;
constexpr double kStepRatio = 2.2;

struct ByRow {
    bool operator()(const cv::Point& a, const cv::Point& b) const {
        return a.y != b.y ? a.y < b.y : a.x < b.x;
    }
};

/** A region at a grid position, and the steps to the next ones there. */
struct Node {
    int region;
    std::array<cv::Point2d, 2> steps;
};

using Nodes = std::map<cv::Point, Node, ByRow>;

bool HaveSimilarSides(double first, double second) {
    return first < kSideRatio * second && second < kSideRatio * first;
}

double Cross(cv::Point2d a, cv::Point2d b) {
    return a.x * b.y - a.y * b.x;
}

class LatticeSearch {
public:
    explicit LatticeSearch(const std::vector<FlatRegion>& regions) : m_regions(regions), m_index(regions) {
        for (const FlatRegion& region : regions) {
            m_longestSide = std::max(m_longestSide, region.side);
        }
    }

    /** The largest grid through a region, in steps to two of its neighbours. */
    Nodes LargestThrough(int seed) const {
        Nodes largest;
        const std::vector<cv::Point2d> steps = StepsFrom(seed);
        for (const cv::Point2d& across : steps) {
            for (const cv::Point2d& down : steps) {
                const double product = cv::norm(across) * cv::norm(down);
                const double ratio = cv::norm(across) / cv::norm(down);
                if (Cross(across, down) < kLeastSine * product || ratio > kStepRatio || ratio * kStepRatio < 1) {
                    continue;
                }
                if (Nodes nodes = Grown(seed, across, down); nodes.size() > largest.size()) {
                    largest = std::move(nodes);
                }
            }
        }
        return largest;
    }

    /** The perspective of the nodes, with all regions that fit it. */
    PatchLattice Fitted(const Nodes& nodes) const {
        PatchLattice lattice;
        std::vector<cv::Point2d> places;
        for (const auto& [position, node] : nodes) {
            lattice.nodes.push_back(position);
            places.push_back(m_regions[node.region].centre);
        }
        // Some regions are only parts of patches: the wide tolerance finds the grid, the narrow one the true patches.
        for (const double tolerance : {kTolerance, kTolerance, kTolerance / 2, kTolerance / 4}) {
            lattice.toImage = FitHomography({lattice.nodes.begin(), lattice.nodes.end()}, places);
            Collect(lattice, places, tolerance);
            if (lattice.nodes.size() < kLeastForFit) {
                return lattice;
            }
        }
        lattice.toImage = FitHomography({lattice.nodes.begin(), lattice.nodes.end()}, places);
        return lattice;
    }

private:
    static constexpr size_t kLeastForFit = 6;
    /** Farthest grid position from the first region, and positions outside the nodes that are tried: a chart has 6x4.
     */
    static constexpr int kReach = 6;
    static constexpr int kMargin = 3;

    std::vector<cv::Point2d> StepsFrom(int seed) const {
        const FlatRegion& from = m_regions[seed];
        std::vector<cv::Point2d> steps;
        for (const int other : m_index.Within(from.centre, kFarthest * from.side)) {
            const cv::Point2d step = m_regions[other].centre - from.centre;
            if (cv::norm(step) >= kNearest * from.side && HaveSimilarSides(from.side, m_regions[other].side)) {
                steps.push_back(step);
            }
        }
        std::sort(steps.begin(), steps.end(),
                  [](const cv::Point2d& a, const cv::Point2d& b) { return cv::norm(a) < cv::norm(b); });
        steps.resize(std::min(steps.size(), kNeighbours));
        return steps;
    }

    /** From node to node in the four directions of the grid. */
    Nodes Grown(int seed, cv::Point2d across, cv::Point2d down) const {
        Nodes nodes{{{0, 0}, {seed, {across, down}}}};
        std::vector<cv::Point> open{{0, 0}};
        while (!open.empty()) {
            const cv::Point position = open.back();
            open.pop_back();
            for (int direction = 0; direction < 4; ++direction) {
                const int axis = direction / 2;
                const int sign = direction % 2 == 0 ? 1 : -1;
                const cv::Point next = position + (axis == 0 ? cv::Point(sign, 0) : cv::Point(0, sign));
                if (nodes.contains(next) || std::max(std::abs(next.x), std::abs(next.y)) > kReach) {
                    continue;
                }
                const Node& node = nodes.at(position);
                const FlatRegion& region = m_regions[node.region];
                const cv::Point2d step = node.steps[axis] * sign;
                const int found = m_index.Nearest(region.centre + step, kTolerance * cv::norm(step));
                if (found >= 0 && found != node.region && HaveSimilarSides(m_regions[found].side, region.side)) {
                    Node grown{found, node.steps};
                    grown.steps[axis] = (m_regions[found].centre - region.centre) * sign;
                    nodes.emplace(next, grown);
                    open.push_back(next);
                }
            }
        }
        return nodes;
    }

    void Collect(PatchLattice& lattice, std::vector<cv::Point2d>& places, double tolerance) const {
        const cv::Rect extent = cv::boundingRect(lattice.nodes);
        lattice.nodes.clear();
        places.clear();
        for (int row = extent.y - kMargin; row < extent.br().y + kMargin; ++row) {
            for (int column = extent.x - kMargin; column < extent.br().x + kMargin; ++column) {
                const cv::Point2d expected = Projected(lattice.toImage, cv::Point(column, row));
                const double step =
                    std::min(cv::norm(Projected(lattice.toImage, cv::Point(column + 1, row)) - expected),
                             cv::norm(Projected(lattice.toImage, cv::Point(column, row + 1)) - expected));
                // A perspective that is off can send places to infinity.
                if (!(step < kFarthest * m_longestSide)) {
                    continue;
                }
                const int found = m_index.Nearest(expected, tolerance * step);
                if (found >= 0 && m_regions[found].side * kNearest < step && m_regions[found].side * kFarthest > step) {
                    lattice.nodes.emplace_back(column, row);
                    places.push_back(m_regions[found].centre);
                }
            }
        }
    }

    const std::vector<FlatRegion>& m_regions;
    RegionIndex m_index;
    double m_longestSide = 0;
};

}  // namespace

std::vector<PatchLattice> FindLattices(const std::vector<FlatRegion>& regions, size_t leastNodes) {
    const LatticeSearch search(regions);
    std::vector<bool> isUsed(regions.size());
    std::vector<PatchLattice> lattices;
    for (size_t seed = 0; seed < regions.size(); ++seed) {
        if (isUsed[seed]) {
            continue;
        }
        const Nodes nodes = search.LargestThrough(static_cast<int>(seed));
        if (nodes.size() < leastNodes) {
            continue;
        }
        for (const auto& [position, node] : nodes) {
            isUsed[node.region] = true;
        }
        PatchLattice lattice = search.Fitted(nodes);
        if (lattice.nodes.size() >= leastNodes) {
            lattices.push_back(std::move(lattice));
        }
    }
    return lattices;
}

}  // namespace kvx::tool
