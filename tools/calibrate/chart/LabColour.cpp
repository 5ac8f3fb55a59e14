#include "tools/calibrate/chart/LabColour.h"

#include <cmath>

namespace kvx::tool {
namespace {

/** ICC.1 for D50; the sum of the rows below for D65, so that white has no colour. */
const Xyz kD50(0.96422, 1, 0.82521);
const Xyz kD65(0.95047, 1, 1.08883);

/** sRGB's primaries at D65. */
const cv::Matx33d kXyzOfLinear(0.4124564, 0.3575761, 0.1804375,  //
                               0.2126729, 0.7151522, 0.0721750,  //
                               0.0193339, 0.1191920, 0.9503041);
const cv::Matx33d kLinearOfXyz = kXyzOfLinear.inv();

const cv::Matx33d kBradford(0.8951, 0.2664, -0.1614,  //
                            -0.7502, 1.7135, 0.0367,  //
                            0.0389, -0.0685, 1.0296);

/** Where the cube root becomes a straight line. */
constexpr double kKnee = 6.0 / 29;

double Compressed(double value) {
    return value > kKnee * kKnee * kKnee ? std::cbrt(value) : value / (3 * kKnee * kKnee) + 4.0 / 29;
}

double Expanded(double value) {
    return value > kKnee ? value * value * value : 3 * kKnee * kKnee * (value - 4.0 / 29);
}

}  // namespace

Lab LabFromXyz(const Xyz& colour, const Xyz& white) {
    const double x = Compressed(colour[0] / white[0]);
    const double y = Compressed(colour[1] / white[1]);
    const double z = Compressed(colour[2] / white[2]);
    return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

Xyz XyzFromLab(const Lab& colour, const Xyz& white) {
    const double y = (colour.lightness + 16) / 116;
    return {white[0] * Expanded(y + colour.a / 500), white[1] * Expanded(y), white[2] * Expanded(y - colour.b / 200)};
}

Lab LabFromLinear(const LinearRgb& colour) {
    return LabFromXyz(kXyzOfLinear * colour, kD65);
}

LinearRgb LinearFromLab(const Lab& colour) {
    return kLinearOfXyz * XyzFromLab(colour, kD65);
}

Lab AdaptedToD65(const Lab& d50) {
    const cv::Vec3d scale = kBradford * kD65;
    const cv::Vec3d divisor = kBradford * kD50;
    cv::Vec3d cone = kBradford * XyzFromLab(d50, kD50);
    for (int i = 0; i < 3; ++i) {
        cone[i] *= scale[i] / divisor[i];
    }
    return LabFromXyz(kBradford.inv() * cone, kD65);
}

}  // namespace kvx::tool
