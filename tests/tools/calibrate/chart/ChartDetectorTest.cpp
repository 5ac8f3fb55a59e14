#include "tools/calibrate/chart/ChartDetector.h"

#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include "DrawnChart.h"
#include "tools/scene/Scene.h"

namespace kvx::tool {
namespace {

/** A warm light on an ordinary sensor. */
const cv::Matx33f kSensor(0.60f, 0.30f, 0.10f, 0.15f, 0.75f, 0.10f, 0.01f, 0.08f, 0.17f);

TEST(ChartDetector, FindsDrawnChartsInAnyOrientationAndLight) {
    using Corners = std::vector<cv::Point2f>;
    const struct {
        const char* name;
        Corners corners;
        double noise = 0;   // standard deviation
        double shadow = 1;  // light on the left part of the picture
        double exposure = 1;
    } cases[] = {
        {"upright", {{100, 100}, {400, 100}, {400, 310}, {100, 310}}},
        {"small", {{300, 200}, {390, 200}, {390, 263}, {300, 263}}},
        {"turned by 90 degrees", {{400, 80}, {400, 380}, {190, 380}, {190, 80}}},
        {"upside down and mirrored", {{100, 310}, {400, 310}, {400, 100}, {100, 100}}},
        {"askew", {{250, 60}, {480, 250}, {340, 420}, {110, 220}}},
        {"in perspective", {{120, 90}, {480, 150}, {500, 330}, {90, 420}}},
        {"noisy", {{200, 100}, {350, 100}, {350, 205}, {200, 205}}, 0.03},
        {"half in the shade", {{150, 100}, {450, 120}, {440, 330}, {140, 310}}, 0.002, 0.25},
        {"dark", {{150, 100}, {450, 120}, {440, 330}, {140, 310}}, 0.0005, 1, 0.05},
    };
    for (const auto& [name, corners, noise, shadow, exposure] : cases) {
        SCOPED_TRACE(name);
        DrawnChart drawn(corners);
        cv::Mat_<cv::Vec3f> seen;
        cv::transform(drawn.light * exposure, seen, kSensor);
        seen(cv::Rect(0, 0, 300, 480)) *= shadow;
        cv::Mat_<cv::Vec3f> grain(seen.size());
        cv::RNG(1).fill(grain, cv::RNG::NORMAL, 0, noise);
        seen += grain;
        cv::threshold(seen, seen, 0, 0, cv::THRESH_TOZERO);
        const auto place = FindChart(seen);
        ASSERT_TRUE(place);
        EXPECT_LT(drawn.Error(place->toFrame), 0.15);
    }
}

TEST(ChartDetector, TakesCornersInEitherDirectionFromAnyOfThem) {
    const DrawnChart drawn({{120, 90}, {480, 150}, {500, 330}, {90, 420}});
    auto corners = ChartCorners(drawn.toScene);
    for (int turn = 0; turn < 8; ++turn) {
        EXPECT_LT(drawn.Error(ChartAt(corners, drawn.light).toFrame), 0.01) << turn;
        std::rotate(corners.begin(), corners.begin() + 1, corners.end());
        if (turn == 3) {
            std::reverse(corners.begin(), corners.end());
        }
    }
}

TEST(ChartDetector, FindsNoneWhereThereIsNone) {
    const std::vector<cv::Point2f> corners = {{100, 100}, {400, 100}, {400, 310}, {100, 310}};
    std::vector<cv::Mat_<cv::Vec3f>> pictures;
    // Grids of patches like the chart's: its own colours in other places, random colours, greys.
    cv::RNG random(5);
    for (int kind = 0; kind < 12; ++kind) {
        DrawnChart drawn(corners);
        for (int patch = 0; patch < kChartPatches; ++patch) {
            const cv::Point2d centre = Projected(drawn.toScene, PatchCentre(patch));
            LinearRgb colour(random.uniform(0.02, 1.0), random.uniform(0.02, 1.0), random.uniform(0.02, 1.0));
            if (kind % 3 == 0) {
                colour = ChartPatches()[(patch * 7 + kind + 1) % kChartPatches].linear;
            } else if (kind % 3 == 1) {
                colour = LinearRgb::all(colour[0]);
            }
            const cv::Rect area(cv::Point(centre) - cv::Point(19, 19), cv::Size(38, 38));
            drawn.light(area) = cv::Vec3f(colour);
        }
        pictures.push_back(drawn.light);
    }
    cv::Mat scene;
    cv::cvtColor(DrawScene().pixels, scene, cv::COLOR_BGR2RGB);
    scene.convertTo(scene, CV_32F, 1 / 65535.0);
    pictures.emplace_back(scene);
    pictures.emplace_back(480, 640, cv::Vec3f::all(0));
    pictures.emplace_back(2, 2, cv::Vec3f::all(1));
    for (size_t i = 0; i < pictures.size(); ++i) {
        EXPECT_FALSE(FindChart(pictures[i])) << i;
    }
}

}  // namespace
}  // namespace kvx::tool
