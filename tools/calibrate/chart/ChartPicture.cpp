#include "tools/calibrate/chart/ChartPicture.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>

#include "tools/calibrate/chart/ChartDetector.h"
#include "tools/calibrate/chart/Homography.h"
#include "tools/look/Sheet.h"

namespace kvx::tool {
namespace {

constexpr int kWholeWidth = 640;
constexpr int kChartWidth = 480;
constexpr int kTile = 80;
const cv::Scalar kOutline(60, 60, 255);
const cv::Scalar kSquare(255, 255, 255);
/** Coordinates of lines have this many fractional bits. */
constexpr int kShift = 4;

uint8_t Displayed(double linear) {
    const double light = std::clamp(linear, 0.0, 1.0);
    const double display = light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
    return static_cast<uint8_t>(std::lround(255 * display));
}

/** Blue first, as pictures are. */
cv::Vec3b DisplayColour(const LinearRgb& colour) {
    return {Displayed(colour[2]), Displayed(colour[1]), Displayed(colour[0])};
}

cv::Mat InColours(const cv::Mat_<cv::Vec3f>& linear, const ChartResult& chart, const cv::Matx33d& matrix) {
    cv::Mat_<cv::Vec3b> picture(linear.size());
    const LinearRgb clipped(1 / chart.gains.red, 1 / chart.gains.green, 1 / chart.gains.blue);
    std::transform(linear.begin(), linear.end(), picture.begin(), [&](const cv::Vec3f& light) {
        // As in conversions, what the gains raise above white becomes white.
        const LinearRgb limited(std::min<double>(light[0], clipped[0]), std::min<double>(light[1], clipped[1]),
                                std::min<double>(light[2], clipped[2]));
        return DisplayColour(Corrected(limited, chart.gains, matrix, chart.exposure));
    });
    return picture;
}

/** `field`: from places on the chart to pixels. */
void DrawQuad(cv::Mat& picture, const cv::Matx33d& field, const std::vector<cv::Point2d>& corners,
              const cv::Scalar& colour) {
    std::vector<cv::Point> pixels;
    pixels.reserve(corners.size());
    for (const cv::Point2d& corner : corners) {
        pixels.emplace_back(Projected(field, corner) * (1 << kShift));
    }
    cv::polylines(picture, pixels, /*isClosed=*/true, colour, 1, cv::LINE_AA, kShift);
}

void DrawOutline(cv::Mat& picture, const cv::Matx33d& field) {
    const auto corners = ChartCorners(cv::Matx33d::eye());
    DrawQuad(picture, field, {corners.begin(), corners.end()}, kOutline);
}

cv::Matx33d Scaled(double scale, cv::Point2d corner, const cv::Matx33d& field) {
    // Whole numbers are centres of pixels, before and after.
    const auto shift = [&](double start) { return (0.5 - start) * scale - 0.5; };
    return cv::Matx33d(scale, 0, shift(corner.x), 0, scale, shift(corner.y), 0, 0, 1) * field;
}

cv::Mat WholeFrame(const FoundChart& chart, const ChartResult& result, const cv::Matx33d& matrix) {
    cv::Mat_<cv::Vec3f> small = chart.linear;
    const double scale = std::min(1.0, static_cast<double>(kWholeWidth) / chart.linear.cols);
    cv::resize(chart.linear, small, {}, scale, scale, cv::INTER_AREA);
    cv::Mat picture = InColours(small, result, matrix);
    DrawOutline(picture, Scaled(scale, {}, chart.toFrame));
    return picture;
}

cv::Mat EnlargedChart(const FoundChart& chart, const ChartResult& result, const cv::Matx33d& matrix) {
    std::vector<cv::Point2f> corners;
    for (const cv::Point2d& corner : ChartCorners(chart.toFrame)) {
        corners.push_back(corner);
    }
    cv::Rect area = cv::boundingRect(corners);
    const int margin = std::max(area.width, area.height) / 12;
    area = (area + cv::Size(2 * margin, 2 * margin) - cv::Point(margin, margin)) & cv::Rect({}, chart.linear.size());
    const double scale = static_cast<double>(kChartWidth) / std::max(area.width, area.height);
    cv::Mat_<cv::Vec3f> enlarged;
    cv::resize(chart.linear(area), enlarged, {}, scale, scale, scale < 1 ? cv::INTER_AREA : cv::INTER_NEAREST);
    cv::Mat picture = InColours(enlarged, result, matrix);
    const cv::Matx33d field = Scaled(scale, area.tl(), chart.toFrame);
    DrawOutline(picture, field);
    for (int patch = 0; patch < kChartPatches; ++patch) {
        std::vector<cv::Point2d> square;
        for (const cv::Point2d corner : {cv::Point2d(-1, -1), {1, -1}, {1, 1}, {-1, 1}}) {
            square.push_back(PatchCentre(patch) + kMeasuredReach * corner);
        }
        DrawQuad(picture, field, square, kSquare);
    }
    return picture;
}

cv::Mat PatchTiles(const PatchSamples& samples, const ChartResult& result, const cv::Matx33d& matrix) {
    cv::Mat picture(kChartRows * kTile, kChartColumns * kTile, CV_8UC3, cv::Scalar::all(0));
    for (int patch = 0; patch < kChartPatches; ++patch) {
        const cv::Point corner(patch % kChartColumns * kTile, patch / kChartColumns * kTile);
        constexpr int kHalf = kTile / 2 - 2;
        const LinearRgb seen = Corrected(samples[patch].light, result.gains, matrix, result.exposure);
        const cv::Size half(kHalf, 2 * kHalf);
        picture(cv::Rect(corner + cv::Point(2, 2), half)) = cv::Scalar(DisplayColour(seen));
        picture(cv::Rect(corner + cv::Point(2 + kHalf, 2), half)) =
            cv::Scalar(DisplayColour(ChartPatches()[patch].linear));
        const std::string error = samples[patch].isClipped ? "clipped" : fmt::format("{:.1f}", result.after[patch]);
        const bool isBright = ChartPatches()[patch].lab.lightness > 55;
        cv::putText(picture, error, corner + cv::Point(6, kTile - 8), cv::FONT_HERSHEY_SIMPLEX, 0.4,
                    cv::Scalar::all(isBright ? 0 : 255), 1, cv::LINE_AA);
    }
    return picture;
}

}  // namespace

cv::Mat DrawCharts(const std::vector<FoundChart>& charts, const ColourFit& fit) {
    std::vector<std::vector<SheetCell>> rows;
    for (size_t i = 0; i < charts.size(); ++i) {
        const FoundChart& chart = charts[i];
        const ChartResult& result = fit.charts[i];
        const std::string errors = fmt::format("mean CIEDE2000 {:.2f}, without the matrix {:.2f}",
                                               MeanError(result.after), MeanError(result.before));
        rows.push_back({{WholeFrame(chart, result, fit.matrix), chart.name, "the outline of the patches"},
                        {EnlargedChart(chart, result, fit.matrix), "measured", "the middle of each patch"},
                        {PatchTiles(chart.samples, result, fit.matrix), "camera | reference", errors}});
    }
    return DrawSheet("Colour chart", rows);
}

}  // namespace kvx::tool
