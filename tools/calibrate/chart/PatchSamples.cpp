#include "tools/calibrate/chart/PatchSamples.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <opencv2/imgproc.hpp>
#include <vector>

#include "tools/ToolError.h"
#include "tools/calibrate/chart/Homography.h"

namespace kvx::tool {
namespace {

/** Samples from here on, as a share of white, are clipped; so many of them are not dirt or noise. */
constexpr double kClipped = 0.98;
constexpr double kClippedShare = 0.02;
/** At either end, for specks and glints. */
constexpr double kTrimmedShare = 0.1;

double TrimmedMean(std::vector<double>& values) {
    std::sort(values.begin(), values.end());
    const auto trimmed = static_cast<std::ptrdiff_t>(kTrimmedShare * static_cast<double>(values.size()));
    const double sum = std::accumulate(values.begin() + trimmed, values.end() - trimmed, 0.0);
    return sum / static_cast<double>(values.size() - 2 * trimmed);
}

/** The pixels among which those of a patch are. */
cv::Rect Surroundings(const cv::Matx33d& toFrame, cv::Point2d centre) {
    std::vector<cv::Point2f> corners;
    for (const cv::Point2d corner : {cv::Point2d(-1, -1), {1, -1}, {1, 1}, {-1, 1}}) {
        corners.push_back(Projected(toFrame, centre + kMeasuredReach * corner));
    }
    return cv::boundingRect(corners);
}

class PatchReader {
public:
    explicit PatchReader(const RawFrame& light) : m_light(light), m_white(frame::White(light.format)) {}

    /** Clear sites have no colour and do not count. */
    void Add(int row, int column) {
        static constexpr std::string_view kColours = "RGB";
        const size_t colour = kColours.find(frame::FilterAt(m_light.format, row, column));
        if (colour == std::string_view::npos) {
            return;
        }
        const double level = m_light.samples.at<uint16_t>(row, column) / m_white;
        m_values[colour].push_back(level);
        m_clipped += level >= kClipped ? 1 : 0;
    }

    bool HasAllColours() const {
        return std::none_of(m_values.begin(), m_values.end(), [](const auto& values) { return values.empty(); });
    }

    PatchSample Result() {
        const size_t count = m_values[0].size() + m_values[1].size() + m_values[2].size();
        return {{TrimmedMean(m_values[0]), TrimmedMean(m_values[1]), TrimmedMean(m_values[2])},
                m_clipped > kClippedShare * static_cast<double>(count)};
    }

private:
    const RawFrame& m_light;
    double m_white;
    std::array<std::vector<double>, 3> m_values;
    int m_clipped = 0;
};

}  // namespace

PatchSamples MeasurePatches(const RawFrame& light, const cv::Matx33d& toFrame, const std::string& name) {
    const cv::Matx33d toChart = toFrame.inv();
    PatchSamples samples;
    for (int patch = 0; patch < kChartPatches; ++patch) {
        const cv::Point2d centre = PatchCentre(patch);
        const cv::Rect pixels = Surroundings(toFrame, centre) & cv::Rect({}, light.samples.size());
        PatchReader reader(light);
        for (int row = pixels.y; row < pixels.br().y; ++row) {
            for (int column = pixels.x; column < pixels.br().x; ++column) {
                const cv::Point2d away = Projected(toChart, cv::Point(column, row)) - centre;
                if (std::max(std::abs(away.x), std::abs(away.y)) <= kMeasuredReach) {
                    reader.Add(row, column);
                }
            }
        }
        if (!reader.HasAllColours()) {
            Fail(ExitCode::Frame, "{}: the chart's patch '{}' is outside the frame, or too small", name,
                 ChartPatches()[patch].name);
        }
        samples[patch] = reader.Result();
    }
    return samples;
}

}  // namespace kvx::tool
