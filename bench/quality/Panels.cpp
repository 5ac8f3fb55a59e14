#include "quality/Panels.h"

#include <cmath>
#include <numbers>

namespace kvx::quality {
namespace {

/** Red, green and blue, 0..1. */
using Colour = cv::Vec3d;

constexpr double kCentre = kPanelSize / 2.0;
constexpr double kPi = std::numbers::pi;

Colour Mixed(const Colour& a, const Colour& b, double share) {
    return a * (1 - share) + b * share;
}

Colour ZonePlate(double x, double y) {
    constexpr double finestPitch = 2.4;  // pixels per ring, at the middle of each side
    const double squared = (x - kCentre) * (x - kCentre) + (y - kCentre) * (y - kCentre);
    return Colour::all(0.5 + 0.45 * std::cos(kPi * squared / (finestPitch * kCentre)));
}

Colour ColourEdges(double x, double y) {
    Colour colour = x + y / 3 < kPanelSize * 0.6 ? Colour(0.1, 0.45, 0.5) : Colour(0.9, 0.8, 0.15);
    if (std::hypot(x - 44, y - 44) < 28) colour = Colour(0.8, 0.1, 0.1);
    if (std::abs((x - 20) - (y - 118) * -0.7) < 4) colour = Colour(0.1, 0.15, 0.7);
    if (std::fmod(std::hypot(x - 110, y - 110), 8) < 1.5) colour = Colour(0.5, 0.1, 0.4);
    return colour;
}

Colour Fan(double x, double y) {
    const double angle = std::atan2(y + 8, x + 8), distance = std::hypot(x + 8, y + 8);
    const double lines = std::fmod(angle * 40 / kPi, 1.0);
    const double halfWidth = 0.7 * 40 / kPi / distance;  // 1.4 pixels everywhere
    return lines < halfWidth || lines > 1 - halfWidth ? Colour(0.15, 0.1, 0.1) : Colour(0.85, 0.75, 0.65);
}

Colour PicketFence(double x, double y) {
    const double pitch = 2.1 + 3.5 * y / kPanelSize;
    const double bars = 0.5 + 0.5 * std::sin(2 * kPi * (x + 0.06 * y - kCentre) / pitch);
    return Mixed(Colour(0.25, 0.35, 0.2), Colour(0.9, 0.9, 0.85), bars);
}

}  // namespace

cv::Mat DrawPanel(int number) {
    using Draw = Colour (*)(double, double);
    static constexpr Draw panels[kPanelCount] = {ZonePlate, ColourEdges, Fan, PicketFence};
    constexpr int fine = 4;  // samples along each side of a pixel, as on the area of a sensor pixel
    cv::Mat picture(kPanelSize, kPanelSize, CV_8UC3);
    for (int y = 0; y < kPanelSize; ++y)
        for (int x = 0; x < kPanelSize; ++x) {
            Colour sum;
            for (int i = 0; i < fine * fine; ++i)
                sum += panels[number](x + (i % fine + 0.5) / fine, y + (i / fine + 0.5) / fine);
            const Colour mean = sum * (255.0 / (fine * fine));
            picture.at<cv::Vec3b>(y, x) =
                cv::Vec3b(cv::saturate_cast<uint8_t>(mean[2]), cv::saturate_cast<uint8_t>(mean[1]),
                          cv::saturate_cast<uint8_t>(mean[0]));
        }
    return picture;
}

}  // namespace kvx::quality
