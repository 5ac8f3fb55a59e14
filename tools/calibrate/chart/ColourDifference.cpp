#include "tools/calibrate/chart/ColourDifference.h"

#include <cmath>

namespace kvx::tool {
namespace {

constexpr double kDegree = CV_PI / 180;

/** How much of a high chroma counts: 0 for grey, 1 far from it. */
double HighChroma(double chroma) {
    const double power = std::pow(chroma, 7);
    return std::sqrt(power / (power + std::pow(25.0, 7)));
}

/** In degrees, 0 to 360; 0 for grey. */
double HueAngle(double a, double b) {
    const double angle = a == 0 && b == 0 ? 0 : std::atan2(b, a) / kDegree;
    return angle < 0 ? angle + 360 : angle;
}

/** The middle of two hues, on the shorter arc. */
double MeanHue(double first, double second) {
    const double mean = (first + second) / 2;
    return std::abs(first - second) <= 180 ? mean : mean < 180 ? mean + 180 : mean - 180;
}

}  // namespace

double ColourDifference(const Lab& first, const Lab& second) {
    const double spread = 1.5 - 0.5 * HighChroma((std::hypot(first.a, first.b) + std::hypot(second.a, second.b)) / 2);
    const double chroma1 = std::hypot(first.a * spread, first.b);
    const double chroma2 = std::hypot(second.a * spread, second.b);
    const double hue1 = HueAngle(first.a * spread, first.b);
    const double hue2 = HueAngle(second.a * spread, second.b);
    const bool isGrey = chroma1 * chroma2 == 0;

    double turn = isGrey ? 0 : hue2 - hue1;
    turn += turn > 180 ? -360 : turn < -180 ? 360 : 0;
    const double lightnessStep = second.lightness - first.lightness;
    const double chromaStep = chroma2 - chroma1;
    const double hueStep = 2 * std::sqrt(chroma1 * chroma2) * std::sin(turn / 2 * kDegree);

    const double chroma = (chroma1 + chroma2) / 2;
    const double hue = isGrey ? hue1 + hue2 : MeanHue(hue1, hue2);
    const double fromMiddle = std::pow((first.lightness + second.lightness) / 2 - 50, 2);
    const double hueEffect = 1 - 0.17 * std::cos((hue - 30) * kDegree) + 0.24 * std::cos(2 * hue * kDegree) +
                             0.32 * std::cos((3 * hue + 6) * kDegree) - 0.20 * std::cos((4 * hue - 63) * kDegree);
    const double lightnessPart = lightnessStep / (1 + 0.015 * fromMiddle / std::sqrt(20 + fromMiddle));
    const double chromaPart = chromaStep / (1 + 0.045 * chroma);
    const double huePart = hueStep / (1 + 0.015 * chroma * hueEffect);

    const double blueTurn = 60 * std::exp(-std::pow((hue - 275) / 25, 2));
    const double rotation = -2 * HighChroma(chroma) * std::sin(blueTurn * kDegree);
    return std::sqrt(lightnessPart * lightnessPart + chromaPart * chromaPart + huePart * huePart +
                     rotation * chromaPart * huePart);
}

}  // namespace kvx::tool
