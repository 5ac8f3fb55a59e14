#include "tools/scene/ChartScene.h"

#include <algorithm>
#include <opencv2/imgproc.hpp>
#include <utility>

#include "tools/calibrate/chart/ChartPatches.h"

namespace kvx::tool {
namespace {

/** The chart, patches on the dark card, and the map from places on it to its pixels. */
std::pair<cv::Mat_<cv::Vec3f>, cv::Matx33d> UprightChart() {
    constexpr int kPitch = 40;
    constexpr int kMargin = 16;
    constexpr int kGap = 3;
    cv::Mat_<cv::Vec3f> card(kChartRows * kPitch + 2 * kMargin, kChartColumns * kPitch + 2 * kMargin,
                             cv::Vec3f::all(0.03f));
    for (int patch = 0; patch < kChartPatches; ++patch) {
        const cv::Point corner = cv::Point(PatchCentre(patch)) * kPitch + cv::Point(kMargin + kGap, kMargin + kGap);
        LinearRgb colour = ChartPatches()[patch].linear;
        colour[0] = std::max(colour[0], 0.0);  // cyan is outside sRGB
        card(cv::Rect(corner, cv::Size(kPitch - 2 * kGap, kPitch - 2 * kGap))) = cv::Vec3f(colour);
    }
    const double first = kMargin + kPitch / 2.0 - 0.5;
    return {card, {kPitch, 0, first, 0, kPitch, first, 0, 0, 1}};
}

}  // namespace

ChartScene DrawChartScene(const std::vector<cv::Point2f>& corners, cv::Size size) {
    ChartScene scene{cv::Mat_<cv::Vec3f>(size, cv::Vec3f::all(0.4f)), {}};
    cv::RNG random(3);
    for (int disc = 0; disc < 40; ++disc) {
        const cv::Point middle(random.uniform(0, size.width), random.uniform(0, size.height));
        cv::circle(scene.light, middle, random.uniform(4, 30),
                   {random.uniform(0.0, 1.0), random.uniform(0.0, 1.0), random.uniform(0.0, 1.0)}, cv::FILLED);
    }
    const auto [card, toCard] = UprightChart();
    const auto right = static_cast<float>(card.cols - 1);
    const auto bottom = static_cast<float>(card.rows - 1);
    const std::vector<cv::Point2f> from = {{0, 0}, {right, 0}, {right, bottom}, {0, bottom}};
    const cv::Matx33d map = cv::Mat_<double>(cv::getPerspectiveTransform(from, corners));
    cv::warpPerspective(card, scene.light, map, size, cv::INTER_AREA, cv::BORDER_TRANSPARENT);
    scene.toScene = map * toCard;
    return scene;
}

}  // namespace kvx::tool
