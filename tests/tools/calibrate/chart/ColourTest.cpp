#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include "tools/calibrate/chart/ChartPatches.h"
#include "tools/calibrate/chart/ColourDifference.h"

namespace kvx::tool {
namespace {

TEST(ColourDifference, EqualsThePublishedPairs) {
    const struct {
        Lab first, second;
        double difference;
    } pairs[] = {
        // Table 1 of Sharma, Wu and Dalal: every branch for hue angles, the turn in blue, greys, dark and light colours
        {{50, 2.6772, -79.7751}, {50, 0, -82.7485}, 2.0425},
        {{50, -1.3802, -84.2814}, {50, 0, -82.7485}, 1.0000},
        {{50, 0, 0}, {50, -1, 2}, 2.3669},
        {{50, 2.4900, -0.0010}, {50, -2.4900, 0.0009}, 7.1792},
        {{50, 2.4900, -0.0010}, {50, -2.4900, 0.0011}, 7.2195},
        {{50, -0.0010, 2.4900}, {50, 0.0009, -2.4900}, 4.8045},
        {{50, -0.0010, 2.4900}, {50, 0.0011, -2.4900}, 4.7461},
        {{50, 2.5, 0}, {73, 25, -18}, 27.1492},
        {{50, 2.5, 0}, {61, -5, 29}, 22.8977},
        {{50, 2.5, 0}, {56, -27, -3}, 31.9030},
        {{60.2574, -34.0099, 36.2677}, {60.4626, -34.1751, 39.4387}, 1.2644},
        {{22.7233, 20.0904, -46.6940}, {23.0331, 14.9730, -42.5619}, 2.0373},
        {{36.4612, 47.8580, 18.3852}, {36.2715, 50.5065, 21.2231}, 1.4146},
        {{90.9257, -0.5406, -0.9208}, {88.6381, -0.8985, -0.7239}, 1.5381},
        {{2.0776, 0.0795, -1.1350}, {0.9033, -0.0636, -0.5514}, 0.9082},
    };
    for (const auto& [first, second, difference] : pairs) {
        EXPECT_NEAR(ColourDifference(first, second), difference, 5e-5);
        EXPECT_NEAR(ColourDifference(second, first), difference, 5e-5);
    }
}

TEST(LabColour, AgreesWithOpenCvAndWithThePublishedBradfordMatrix) {
    // From D50 to D65, as Lindbloom publishes it.
    const cv::Matx33d bradford(0.9555766, -0.0230393, 0.0631636, -0.0282895, 1.0099416, 0.0210077, 0.0122982,
                               -0.0204830, 1.3299098);
    const Lab blue50{28.37, 15.42, -49.80};
    const Lab blue = AdaptedToD65(blue50);
    const Lab expected =
        LabFromXyz(bradford * XyzFromLab(blue50, {0.96422, 1, 0.82521}), cv::Vec3d(0.95047, 1, 1.08883));
    EXPECT_LT(ColourDifference(blue, expected), 1e-4);
    for (const auto& [name, lab, linear] : ChartPatches()) {
        const LinearRgb visible(std::max(linear[0], 0.0), linear[1], linear[2]);  // OpenCV clamps
        cv::Mat_<cv::Vec3f> pixel(1, 1, cv::Vec3f(visible));
        cv::cvtColor(pixel, pixel, cv::COLOR_LRGB2Lab);
        const cv::Vec3f& other = pixel(0, 0);
        EXPECT_LT(ColourDifference(LabFromLinear(visible), {other[0], other[1], other[2]}), 0.05) << name;
        EXPECT_LT(ColourDifference(LabFromLinear(linear), lab), 1e-9) << name;
    }
}

}  // namespace
}  // namespace kvx::tool
