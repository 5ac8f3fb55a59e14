#include "tools/calibrate/chart/FlatRegions.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <opencv2/imgproc.hpp>

namespace kvx::tool {
namespace {

/** Differences between neighbours that still count as flat, in steps of kStepsPerStop; the coarsest gives the largest
 * regions. */
constexpr std::array kTolerances = {28, 16, 9, 5};
constexpr double kStepsPerStop = 32;
/** Light below this share of the brightest counts as dark: there is more noise than signal. */
constexpr double kDarkShare = 0.004;

constexpr int kSmallestArea = 6;
/** No patch is larger than this share of the picture. */
constexpr double kLargestShare = 1.0 / 24;
constexpr double kLongestSide = 3;  ///< in widths
/** Area relative to that of a parallelogram with the same second moments. */
constexpr double kLeastFilled = 0.78;
constexpr double kMostFilled = 1.2;

/** Equal ratios of light become equal differences. */
cv::Mat RatioScale(const cv::Mat_<cv::Vec3f>& linear) {
    std::array<cv::Mat, 3> planes;
    cv::split(linear, planes.data());
    for (cv::Mat& plane : planes) {
        double brightest = 0;
        cv::minMaxLoc(plane, nullptr, &brightest);
        plane = plane / std::max(kDarkShare * brightest, 1e-9) + 1;
        cv::log(plane, plane);
        plane.convertTo(plane, CV_8U, kStepsPerStop / std::log(2.0));
    }
    cv::Mat scaled;
    cv::merge(planes.data(), planes.size(), scaled);
    return scaled;
}

/** The largest difference of any channel within 3x3 pixels. */
cv::Mat LocalRange(const cv::Mat& scaled) {
    cv::Mat range;
    cv::morphologyEx(scaled, range, cv::MORPH_GRADIENT, cv::getStructuringElement(cv::MORPH_RECT, {3, 3}));
    std::array<cv::Mat, 3> planes;
    cv::split(range, planes.data());
    return cv::max(planes[0], cv::max(planes[1], planes[2]));
}

struct Moments {
    double count = 0, x = 0, y = 0, xx = 0, xy = 0, yy = 0;

    void Add(int column, int row) {
        count += 1;
        x += column;
        y += row;
        xx += static_cast<double>(column) * column;
        xy += static_cast<double>(column) * row;
        yy += static_cast<double>(row) * row;
    }
};

/** A parallelogram's area is 12 times the root of its covariance's determinant. */
bool IsParallelogram(const Moments& sum, double largestArea) {
    if (sum.count < kSmallestArea || sum.count > largestArea) {
        return false;
    }
    // A pixel is a square, not a point: 1/12 is its own variance.
    const double xx = sum.xx / sum.count - std::pow(sum.x / sum.count, 2) + 1.0 / 12;
    const double yy = sum.yy / sum.count - std::pow(sum.y / sum.count, 2) + 1.0 / 12;
    const double xy = sum.xy / sum.count - sum.x * sum.y / (sum.count * sum.count);
    const double determinant = std::max(xx * yy - xy * xy, 1e-9);
    const double filled = sum.count / (12 * std::sqrt(determinant));
    const double half = (xx + yy) / 2;
    const double root = std::sqrt(std::max(half * half - determinant, 0.0));
    const bool isCompact = half + root <= kLongestSide * kLongestSide * (half - root);
    return isCompact && filled >= kLeastFilled && filled <= kMostFilled;
}

/** Regions without repeats: of similar ones at the same place, which several tolerances find, the first counts. */
class Collection {
public:
    explicit Collection(cv::Size size) : m_sides(size, 0) {}

    void Add(const FlatRegion& region) {
        float& known = m_sides(cv::Point(region.centre));
        if (known < kSameSize * region.side && region.side < kSameSize * known) {
            return;
        }
        const int reach = static_cast<int>(0.35 * region.side);
        const cv::Rect middle(cv::Point(region.centre) - cv::Point(reach, reach),
                              cv::Size(2 * reach + 1, 2 * reach + 1));
        m_sides(middle & cv::Rect({}, m_sides.size())) = static_cast<float>(region.side);
        m_regions.push_back(region);
    }

    std::vector<FlatRegion> Take() {
        return std::move(m_regions);
    }

private:
    static constexpr double kSameSize = 2;

    cv::Mat_<float> m_sides;  ///< of the region whose middle is here
    std::vector<FlatRegion> m_regions;
};

void AddRegions(const cv::Mat& flat, Collection& regions) {
    cv::Mat_<int> labels;
    std::vector<Moments> sums(cv::connectedComponents(flat, labels, 4, CV_32S));
    for (int row = 0; row < labels.rows; ++row) {
        const int* line = labels[row];
        for (int column = 0; column < labels.cols; ++column) {
            sums[line[column]].Add(column, row);
        }
    }
    const double largestArea = kLargestShare * static_cast<double>(flat.total());
    for (size_t label = 1; label < sums.size(); ++label) {
        if (const Moments& sum = sums[label]; IsParallelogram(sum, largestArea)) {
            regions.Add({{sum.x / sum.count, sum.y / sum.count}, std::sqrt(sum.count)});
        }
    }
}

}  // namespace

std::vector<FlatRegion> FindFlatRegions(const SearchImage& image) {
    const cv::Mat scaled = RatioScale(image.linear);
    cv::Mat calm;  // without noise, but also without thin gaps
    cv::medianBlur(scaled, calm, 5);
    Collection regions(scaled.size());
    for (const cv::Mat& picture : {scaled, calm}) {
        const cv::Mat range = LocalRange(picture);
        for (const int tolerance : kTolerances) {
            AddRegions(range <= tolerance, regions);
        }
    }
    return regions.Take();
}

}  // namespace kvx::tool
