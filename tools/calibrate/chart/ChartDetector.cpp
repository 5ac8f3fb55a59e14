#include "tools/calibrate/chart/ChartDetector.h"

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>

#include "tools/calibrate/chart/ChartColours.h"
#include "tools/calibrate/chart/Homography.h"
#include "tools/calibrate/chart/PatchLattice.h"
#include "tools/calibrate/chart/SearchImage.h"

namespace kvx::tool {
namespace {

/** Charts reach 0.88 to 0.97, grids found in photographs less than 0.3. */
constexpr double kLeastAgreement = 0.6;
/** Patches of a chart that must be found as regions: dark ones often have no edge. */
constexpr size_t kLeastNodes = 9;
/** With so many the place is exact, and larger pictures need not be searched. */
constexpr std::ptrdiff_t kEnoughRegions = 20;

/** The maps of the chart onto a field of 6x4 (or 4x6) grid positions with its corner at (0, 0). */
std::vector<cv::Matx33d> Orientations() {
    std::vector<cv::Matx33d> maps;
    const double x = kChartColumns - 1;
    const double y = kChartRows - 1;
    for (const bool isMirrored : {false, true}) {
        const cv::Matx33d mirror = isMirrored ? cv::Matx33d(-1, 0, x, 0, 1, 0, 0, 0, 1) : cv::Matx33d::eye();
        maps.push_back(mirror);
        maps.push_back(cv::Matx33d(-1, 0, x, 0, -1, y, 0, 0, 1) * mirror);
        maps.push_back(cv::Matx33d(0, -1, y, 1, 0, 0, 0, 0, 1) * mirror);
        maps.push_back(cv::Matx33d(0, 1, 0, -1, 0, x, 0, 0, 1) * mirror);
    }
    return maps;
}

/** Mean colours in the middle of the patches; std::nullopt if one is outside. */
std::optional<PatchColours> SampledColours(const cv::Mat_<cv::Vec3f>& linear, const cv::Matx33d& toImage) {
    PatchColours colours;
    for (int patch = 0; patch < kChartPatches; ++patch) {
        const cv::Point2d centre = Projected(toImage, PatchCentre(patch));
        const double step = std::min(cv::norm(Projected(toImage, PatchCentre(patch) + cv::Point2d(1, 0)) - centre),
                                     cv::norm(Projected(toImage, PatchCentre(patch) + cv::Point2d(0, 1)) - centre));
        const double reach = 0.2 * step;
        const cv::Rect2d area(centre.x - reach + 0.5, centre.y - reach + 0.5, 2 * reach, 2 * reach);
        const cv::Point first(static_cast<int>(std::floor(area.x)), static_cast<int>(std::floor(area.y)));
        const cv::Point last(static_cast<int>(std::floor(area.br().x)), static_cast<int>(std::floor(area.br().y)));
        const cv::Rect pixels(first, last + cv::Point(1, 1));
        if (!(step >= 1) || (pixels & cv::Rect({}, linear.size())) != pixels) {
            return std::nullopt;
        }
        const cv::Scalar mean = cv::mean(linear(pixels));
        colours[patch] = {mean[0], mean[1], mean[2]};
    }
    return colours;
}

/** The best orientation of a chart that is one of `maps` away from `toImage`. */
ChartPlace BestOrientation(const cv::Mat_<cv::Vec3f>& linear, const cv::Matx33d& toImage) {
    static const std::vector<cv::Matx33d> maps = Orientations();
    ChartPlace best{toImage, 0};
    for (const cv::Matx33d& map : maps) {
        const auto colours = SampledColours(linear, toImage * map);
        if (const double agreement = colours ? ChartAgreement(*colours) : 0; agreement > best.agreement) {
            best = {toImage * map, agreement};
        }
    }
    return best;
}

cv::Matx33d Shift(double x, double y) {
    return {1, 0, x, 0, 1, y, 0, 0, 1};
}

/** A place, and how many of its patches were found as regions. */
struct Candidate {
    ChartPlace place;
    std::ptrdiff_t regions = 0;
};

/** The place with the best colours on a grid. */
Candidate BestOnLattice(const cv::Mat_<cv::Vec3f>& linear, const PatchLattice& lattice) {
    Candidate best{};
    const cv::Rect extent = cv::boundingRect(lattice.nodes);
    for (int row = extent.y - kChartColumns + 1; row < extent.br().y; ++row) {
        for (int column = extent.x - kChartColumns + 1; column < extent.br().x; ++column) {
            const auto inside = [&](cv::Size size) {
                return std::count_if(lattice.nodes.begin(), lattice.nodes.end(), [&](const cv::Point& node) {
                    return cv::Rect(cv::Point(column, row), size).contains(node);
                });
            };
            const auto most = std::max(inside({kChartColumns, kChartRows}), inside({kChartRows, kChartColumns}));
            if (most < static_cast<std::ptrdiff_t>(kLeastNodes)) {
                continue;
            }
            if (const ChartPlace place = BestOrientation(linear, lattice.toImage * Shift(column, row));
                place.agreement > best.place.agreement) {
                best = {place, most};
            }
        }
    }
    return best;
}

/** From pixels of a smaller picture to those of the frame. */
cv::Matx33d ToFrame(double scale) {
    const double shift = (scale - 1) / 2;
    return {scale, 0, shift, 0, scale, shift, 0, 0, 1};
}

}  // namespace

std::optional<ChartPlace> FindChart(const cv::Mat_<cv::Vec3f>& linear) {
    Candidate best{};
    const std::vector<SearchImage> pyramid = SearchPyramid(linear);
    // From the smallest picture: it takes least time and has least noise.
    for (auto image = pyramid.rbegin(); image != pyramid.rend() && best.regions < kEnoughRegions; ++image) {
        for (const PatchLattice& lattice : FindLattices(FindFlatRegions(*image), kLeastNodes)) {
            Candidate found = BestOnLattice(image->linear, lattice);
            if (found.place.agreement >= kLeastAgreement && found.regions > best.regions) {
                found.place.toFrame = ToFrame(image->scale) * found.place.toFrame;
                best = found;
            }
        }
    }
    return best.regions == 0 ? std::nullopt : std::optional(best.place);
}

ChartPlace ChartAt(const std::array<cv::Point2d, 4>& corners, const cv::Mat_<cv::Vec3f>& linear) {
    const auto field = ChartCorners(cv::Matx33d::eye());
    ChartPlace best{{}, -1};
    for (int turn = 0; turn < 2; ++turn) {
        std::array<cv::Point2d, 4> turned = corners;
        std::rotate(turned.begin(), turned.begin() + turn, turned.end());
        const ChartPlace place =
            BestOrientation(linear, FitHomography({field.begin(), field.end()}, {turned.begin(), turned.end()}));
        if (place.agreement > best.agreement) {
            best = place;
        }
    }
    return best;
}

std::array<cv::Point2d, 4> ChartCorners(const cv::Matx33d& toFrame) {
    constexpr double kOuter = kPatchSide / 2;
    constexpr double kRight = kChartColumns - 1 + kOuter;
    constexpr double kBottom = kChartRows - 1 + kOuter;
    return {Projected(toFrame, {-kOuter, -kOuter}), Projected(toFrame, {kRight, -kOuter}),
            Projected(toFrame, {kRight, kBottom}), Projected(toFrame, {-kOuter, kBottom})};
}

}  // namespace kvx::tool
