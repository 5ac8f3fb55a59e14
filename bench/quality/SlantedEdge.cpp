#include "quality/SlantedEdge.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace kvx::quality {
namespace {

const Edge kEdges[] = {
    {"grey", cv::Vec3d::all(800), cv::Vec3d::all(2400)},
    {"colour", {900, 900, 2400}, {1800, 1800, 600}},  // the mean of the three, which is pan, stays
};

constexpr double kSlant = 5 * std::numbers::pi / 180;

/** Distance of a point from the edge in pixels, positive to its right. */
double Distance(double x, double y, const cv::Size& size) {
    return (x - size.width / 2.0) * std::cos(kSlant) + (y - size.height / 2.0) * std::sin(kSlant);
}

/** Mean values across the edge, four per pixel. */
class Profile {
public:
    void Add(double distance, double value) {
        if (std::abs(distance) >= kReach) return;
        Bin& bin = m_bins[static_cast<size_t>((distance + kReach) * kBinsPerPixel)];
        bin.sum += value;
        ++bin.count;
    }

    /** Normalises the profile: 0 at the left end, 1 at the right end. */
    std::vector<double> Normalised() const {
        const double left = MeanOf(0, kPlateau), right = MeanOf(m_bins.size() - kPlateau, m_bins.size());
        std::vector<double> values;
        for (const Bin& bin : m_bins) values.push_back((bin.sum / bin.count - left) / (right - left));
        return values;
    }

    static constexpr size_t kReach = 20, kBinsPerPixel = 4, kPlateau = 8 * kBinsPerPixel;

private:
    struct Bin {
        double sum = 0, count = 0;
    };

    double MeanOf(size_t first, size_t last) const {
        Bin all;
        for (size_t index = first; index < last; ++index) {
            all.sum += m_bins[index].sum;
            all.count += m_bins[index].count;
        }
        return all.sum / all.count;
    }

    std::vector<Bin> m_bins = std::vector<Bin>(2 * kReach * kBinsPerPixel);
};

/** The bin, from the middle in the direction `step`, where values first reach `level`. */
double Crossing(const std::vector<double>& values, double level, int step) {
    const int count = static_cast<int>(values.size());
    for (int index = count / 2; index > 0 && index < count - 1; index += step) {
        const double here = values[static_cast<size_t>(index)], next = values[static_cast<size_t>(index + step)];
        if ((next - level) * step >= 0 && (here - level) * step < 0)
            return index + step * (level - here) / (next - here);
    }
    return step * HUGE_VAL;
}

/** The width from 10 to 90 per cent. The middle of the profile must lie between them. */
double WidthOf(const std::vector<double>& values) {
    return (Crossing(values, 0.9, 1) - Crossing(values, 0.1, -1)) / Profile::kBinsPerPixel;
}

double OvershootOf(const std::vector<double>& values) {
    const auto [least, largest] = std::minmax_element(values.begin(), values.end());
    return std::max({0.0, -*least, *largest - 1});
}

}  // namespace

std::span<const Edge> AllEdges() {
    return kEdges;
}

Picture DrawEdge(const Edge& edge, const cv::Size& size) {
    constexpr int kFine = 8;  // samples along each side of a pixel
    cv::Mat picture(size, CV_16UC3);
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x) {
            int onTheRight = 0;
            for (int i = 0; i < kFine * kFine; ++i) {
                const int column = i % kFine, row = i / kFine;
                onTheRight += Distance(x + (column + 0.5) / kFine, y + (row + 0.5) / kFine, size) > 0;
            }
            const double share = static_cast<double>(onTheRight) / (kFine * kFine);
            picture.at<cv::Vec3w>(y, x) = cv::Vec3w(edge.left * (1 - share) + edge.right * share);
        }
    return {picture, 4095};
}

EdgeFigures MeasureEdge(const Edge& edge, const Setting& setting) {
    const cv::Size size(192, 1024);
    const Picture picture = DrawEdge(edge, size);
    Profile profiles[3];
    const uint64_t frames = setting.analogGain ? 4 : 1;
    for (uint64_t frame = 0; frame < frames; ++frame) {
        Setting other = setting;
        other.seed += frame;
        const cv::Mat restored = Restored(picture, other);
        constexpr int kBorder = 8;
        for (int y = kBorder; y < size.height - kBorder; ++y)
            for (int x = kBorder; x < size.width - kBorder; ++x)
                for (int channel = 0; channel < 3; ++channel)
                    profiles[channel].Add(Distance(x + 0.5, y + 0.5, size), restored.at<cv::Vec3b>(y, x)[channel]);
    }
    EdgeFigures figures;
    for (int channel = 0; channel < 3; ++channel) {
        const std::vector<double> values = profiles[channel].Normalised();
        figures.width[channel] = WidthOf(values);
        figures.overshoot[channel] = OvershootOf(values);
    }
    return figures;
}

}  // namespace kvx::quality
