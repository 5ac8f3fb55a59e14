#pragma once

#include <algorithm>
#include <opencv2/imgproc.hpp>
#include <utility>
#include <vector>

#include "tools/calibrate/chart/ChartDetector.h"
#include "tools/calibrate/chart/ChartPatches.h"
#include "tools/calibrate/chart/Homography.h"

namespace kvx::tool {

/** The chart in linear light, patches a pixel apart on the dark card, and the map from places on it to its pixels. */
inline std::pair<cv::Mat_<cv::Vec3f>, cv::Matx33d> UprightChart() {
    constexpr int kPitch = 40;
    constexpr int kMargin = 16;
    cv::Mat_<cv::Vec3f> card(4 * kPitch + 2 * kMargin, 6 * kPitch + 2 * kMargin, cv::Vec3f::all(0.03f));
    for (int patch = 0; patch < kChartPatches; ++patch) {
        const cv::Point corner(kMargin + patch % 6 * kPitch + 3, kMargin + patch / 6 * kPitch + 3);
        LinearRgb colour = ChartPatches()[patch].linear;
        colour[0] = std::max(colour[0], 0.0);  // cyan is outside sRGB
        card(cv::Rect(corner, cv::Size(kPitch - 6, kPitch - 6))) = cv::Vec3f(colour);
    }
    const double first = kMargin + kPitch / 2.0 - 0.5;
    return {card, {kPitch, 0, first, 0, kPitch, first, 0, 0, 1}};
}

/** A chart on a grey wall with a few bright discs, in linear light. */
struct DrawnChart {
    cv::Mat_<cv::Vec3f> picture;
    cv::Matx33d toPicture;  ///< from places on the chart

    /** `corners`: where the corners of the card are, from that at dark skin on, as the card has them. */
    explicit DrawnChart(const std::vector<cv::Point2f>& corners, cv::Size size = {640, 480})
        : picture(size, cv::Vec3f::all(0.4f)) {
        cv::RNG random(3);
        for (int disc = 0; disc < 40; ++disc) {
            const cv::Point middle(random.uniform(0, size.width), random.uniform(0, size.height));
            cv::circle(picture, middle, random.uniform(4, 30),
                       {random.uniform(0.0, 1.0), random.uniform(0.0, 1.0), random.uniform(0.0, 1.0)}, cv::FILLED);
        }
        const auto [card, toCard] = UprightChart();
        const auto right = static_cast<float>(card.cols - 1);
        const auto bottom = static_cast<float>(card.rows - 1);
        const std::vector<cv::Point2f> from = {{0, 0}, {right, 0}, {right, bottom}, {0, bottom}};
        const cv::Matx33d map = cv::Mat_<double>(cv::getPerspectiveTransform(from, corners));
        cv::warpPerspective(card, picture, map, size, cv::INTER_AREA, cv::BORDER_TRANSPARENT);
        toPicture = map * toCard;
    }

    /** The largest distance between true and found centres of patches, in distances between patches. */
    double Error(const cv::Matx33d& found) const {
        double worst = 0;
        for (int patch = 0; patch < kChartPatches; ++patch) {
            const cv::Point2d place = Projected(toPicture.inv(), Projected(found, PatchCentre(patch)));
            worst = std::max(worst, cv::norm(place - PatchCentre(patch)));
        }
        return worst;
    }
};

}  // namespace kvx::tool
