#include "tools/scene/ScenePanels.h"

#include <array>
#include <cmath>
#include <numbers>
#include <opencv2/imgproc.hpp>

namespace kvx::tool {
namespace {

constexpr double kPi = std::numbers::pi;

/** Hue in degrees, saturation and value from 0 to 1. */
cv::Scalar HsvColour(double hue, double saturation, double value) {
    const cv::Mat hsv(1, 1, CV_32FC3, cv::Scalar(hue, saturation, value));
    cv::Mat colour;
    cv::cvtColor(hsv, colour, cv::COLOR_HSV2BGR);
    const auto pixel = colour.at<cv::Vec3f>(0, 0) * 255.0F;
    return {pixel[0], pixel[1], pixel[2]};
}

cv::Vec3b Mix(const cv::Scalar& paper, const cv::Scalar& ink, double share) {
    const cv::Scalar mixed = paper + (ink - paper) * share;
    return {cv::saturate_cast<uchar>(mixed[0]), cv::saturate_cast<uchar>(mixed[1]), cv::saturate_cast<uchar>(mixed[2])};
}

}  // namespace

void DrawColourChart(cv::Mat canvas) {
    constexpr int kColumns = 6;
    constexpr int kRows = 4;
    constexpr std::array<std::pair<double, double>, 3> kSaturationAndValue = {{{0.85, 0.95}, {0.4, 0.9}, {0.7, 0.45}}};
    const int step = canvas.cols / kColumns;
    for (int index = 0; index < kColumns * kRows; ++index) {
        const int row = index / kColumns;
        const int column = index % kColumns;
        const double greyStep = 255.0 * column / (kColumns - 1);
        const cv::Scalar colour = row < 3 ? HsvColour(60.0 * column + 20.0 * row, kSaturationAndValue[row].first,
                                                      kSaturationAndValue[row].second)
                                          : cv::Scalar::all(greyStep);
        const int gap = step / 14;
        const cv::Rect patch(column * step + gap, row * step + gap, step - 2 * gap, step - 2 * gap);
        cv::rectangle(canvas, patch, colour, cv::FILLED);
    }
}

void DrawZonePlate(cv::Mat canvas, double finestPitch) {
    const double radius = canvas.cols / 2.0;
    for (int row = 0; row < canvas.rows; ++row) {
        for (int column = 0; column < canvas.cols; ++column) {
            const double x = column + 0.5 - radius;
            const double y = row + 0.5 - canvas.rows / 2.0;
            const double wave = std::cos(kPi * (x * x + y * y) / (radius * finestPitch));
            canvas.at<cv::Vec3b>(row, column) = Mix(cv::Scalar::all(0), cv::Scalar::all(255), (1 + wave) / 2);
        }
    }
}

void DrawStar(cv::Mat canvas, int rayCount) {
    canvas.setTo(cv::Scalar::all(235));
    const cv::Point2d middle(canvas.cols / 2.0, canvas.rows / 2.0);
    const double radius = std::min(middle.x, middle.y) * 0.96;
    for (int ray = 0; ray < rayCount; ++ray) {
        const double start = 2 * kPi * ray / rayCount;
        const double end = start + kPi / rayCount;
        const std::vector<cv::Point> wedge = {middle, middle + radius * cv::Point2d(std::cos(start), std::sin(start)),
                                              middle + radius * cv::Point2d(std::cos(end), std::sin(end))};
        cv::fillConvexPoly(canvas, wedge, HsvColour(360.0 * ray / rayCount, 0.9, 0.55), cv::LINE_AA);
    }
}

void DrawLines(cv::Mat canvas, double pitch, double degrees, const cv::Scalar& ink, const cv::Scalar& paper) {
    const double angle = degrees * kPi / 180;
    for (int row = 0; row < canvas.rows; ++row) {
        for (int column = 0; column < canvas.cols; ++column) {
            const double across = column * std::cos(angle) + row * std::sin(angle);
            const double phase = across / pitch - std::floor(across / pitch);
            canvas.at<cv::Vec3b>(row, column) = Mix(paper, ink, phase < 0.5 ? 1 : 0);
        }
    }
}

void DrawText(cv::Mat canvas, const std::string& text, const cv::Scalar& ink, const cv::Scalar& paper) {
    constexpr int kFont = cv::FONT_HERSHEY_SIMPLEX;
    constexpr double kShrinking = 0.82;
    constexpr double kSmallestScale = 0.45;
    canvas.setTo(paper);
    const int widthAtScale1 = cv::getTextSize(text, kFont, 1, 2, nullptr).width;
    int baseline = 0;
    double scale = 0.9 * canvas.cols / widthAtScale1;
    while (scale > kSmallestScale) {
        const int thickness = std::max(1, static_cast<int>(std::lround(2 * scale)));
        const cv::Size size = cv::getTextSize(text, kFont, scale, thickness, nullptr);
        baseline += size.height * 8 / 5;
        const cv::Point start((canvas.cols - size.width) / 2, baseline);
        cv::putText(canvas, text, start, kFont, scale, ink, thickness, cv::LINE_AA);
        scale *= kShrinking;
    }
}

void DrawRamps(cv::Mat canvas) {
    const std::array<cv::Scalar, 4> ends = {cv::Scalar(255, 255, 255), cv::Scalar(0, 0, 255), cv::Scalar(0, 255, 0),
                                            cv::Scalar(255, 0, 0)};
    const int rampRows = canvas.rows / 5;
    for (int column = 0; column < canvas.cols; ++column) {
        const double share = static_cast<double>(column) / (canvas.cols - 1);
        cv::line(canvas, {column, 0}, {column, rampRows - 1}, HsvColour(360 * share, 1, 1));
        for (int ramp = 0; ramp < 4; ++ramp) {
            const int top = (ramp + 1) * rampRows;
            cv::line(canvas, {column, top}, {column, top + rampRows - 1}, ends[ramp] * share);
        }
    }
}

}  // namespace kvx::tool
