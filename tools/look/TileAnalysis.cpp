#include "tools/look/TileAnalysis.h"

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>
#include <vector>

namespace kvx::tool {
namespace {

constexpr int kLargestSide = 1024;

/** The middle, from a site of phase 0 on. */
cv::Mat Middle(const cv::Mat& samples, int tileSide) {
    const auto cut = [tileSide](int size) {
        const int length = std::min(size, kLargestSide) / tileSide * tileSide;
        return cv::Range((size - length) / 2 / tileSide * tileSide, (size - length) / 2 / tileSide * tileSide + length);
    };
    return samples(cut(samples.rows), cut(samples.cols));
}

/** The samples at one site of all tiles, moved from there to the middle of the tiles, and smoothed. */
cv::Mat SitePicture(const cv::Mat& samples, int tileSide, int row, int column) {
    cv::Mat picture(samples.rows / tileSide, samples.cols / tileSide, CV_32F);
    for (int y = 0; y < picture.rows; ++y) {
        const auto* from = samples.ptr<float>(y * tileSide + row) + column;
        for (int x = 0; x < picture.cols; ++x) {
            picture.at<float>(y, x) = from[ptrdiff_t{x} * tileSide];
        }
    }
    const double middle = (tileSide - 1) / 2.0;
    const cv::Matx23d shift(1, 0, (middle - column) / tileSide, 0, 1, (middle - row) / tileSide);
    cv::warpAffine(picture, picture, shift, picture.size(), cv::INTER_LINEAR | cv::WARP_INVERSE_MAP,
                   cv::BORDER_REPLICATE);
    cv::GaussianBlur(picture, picture, cv::Size(), 1.2);
    return picture;
}

/** The number of each site's colour, in the order in which they appear, so that exchanging two colours changes nothing.
 */
struct Colours {
    std::array<int, 16> ofSite{};
    std::vector<int> counts;

    explicit Colours(const frame::Format& format) {
        std::string seen;
        for (int site = 0; site < 16; ++site) {
            const char filter = frame::FilterAt(format, site / 4, site % 4);
            const size_t known = seen.find(filter);
            if (known == std::string::npos) {
                seen += filter;
                counts.push_back(0);
            }
            ofSite[site] = static_cast<int>(std::min(known, seen.size() - 1));
            ++counts[ofSite[site]];
        }
    }
};

/**
 * Red, green and blue of each tile by a format, each relative to its mean over the frame; the darkest site counts as
 * black. All the same for mono.
 */
cv::Mat_<cv::Vec3f> BalancedColours(const cv::Mat_<cv::Vec<float, 16>>& tiles, const frame::Format& format) {
    const std::string letters = format.family == frame::Family::Mono ? "YYY" : "RGB";
    cv::Matx<float, 3, 16> means;
    for (int colour = 0; colour < 3; ++colour) {
        for (int site = 0; site < 16; ++site) {
            means(colour, site) = frame::FilterAt(format, site / 4, site % 4) == letters[colour] ? 1.0F : 0.0F;
        }
    }
    cv::Mat_<cv::Vec3f> colours;
    cv::Mat light = tiles.reshape(1);
    double black = 0;
    cv::minMaxLoc(light, &black);
    light = light - black;
    cv::transform(light.reshape(16), colours, means);
    const cv::Scalar whole = cv::mean(colours);
    const auto gain = [&whole](int colour) { return whole[colour] > 0 ? 1 / whole[colour] : 0; };
    cv::multiply(colours, cv::Scalar(gain(0), gain(1), gain(2)), colours);
    return colours;
}

}  // namespace

TileAnalysis::TileAnalysis(const cv::Mat& samples) {
    cv::Mat values;
    Middle(samples, kSide).convertTo(values, CV_32F);
    std::vector<cv::Mat> pictures;
    pictures.reserve(size_t{kSide} * kSide);
    for (int site = 0; site < kSide * kSide; ++site) {
        pictures.push_back(SitePicture(values, kSide, site / kSide, site % kSide));
    }
    cv::merge(pictures, m_sites);
    double squares = 0;
    for (const Sites& sites : m_sites) {
        const double mean = cv::sum(sites)[0] / kSites;
        m_mean += mean;
        m_scene += mean * mean;
        for (int site = 0; site < kSites; ++site) {
            squares += (sites[site] - mean) * (sites[site] - mean);
        }
    }
    const auto places = static_cast<double>(m_sites.total());
    m_mean /= places;
    m_scene = m_scene / places - m_mean * m_mean;
    m_total = squares / (places * (kSites - 1));
}

double TileAnalysis::Explained(const frame::Format& format) const {
    const Colours colours(format);
    double squares = 0;
    std::vector<double> means(colours.counts.size());
    for (const Sites& sites : m_sites) {
        std::fill(means.begin(), means.end(), 0.0);
        for (int site = 0; site < kSites; ++site) {
            means[colours.ofSite[site]] += double{sites[site]} / colours.counts[colours.ofSite[site]];
        }
        for (int site = 0; site < kSites; ++site) {
            const double difference = sites[site] - means[colours.ofSite[site]];
            squares += difference * difference;
        }
    }
    const double freedom = static_cast<double>(m_sites.total()) * static_cast<double>(16 - colours.counts.size());
    return m_total > 0 ? 1 - squares / freedom / m_total : 0;
}

double TileAnalysis::Evenness() const {
    return m_scene > 0 ? std::max(0.0, 1 - 2 * std::sqrt(m_total / m_scene)) : 1;
}

double TileAnalysis::Contrast() const {
    return m_mean > 0 ? std::sqrt(m_total) / m_mean : 0;
}

double TileAnalysis::Warmth(const frame::Format& format) const {
    const cv::Mat_<cv::Vec3f> colours = BalancedColours(m_sites, format);
    double warmth = 0;
    for (const cv::Vec3f& colour : colours) {
        const auto [lowest, highest] = std::minmax({colour[0], colour[1], colour[2]});
        const double saturation = highest > 0 ? (highest - lowest) / highest : 0;
        warmth += (colour[0] > colour[2] ? 1 : -1) * saturation * saturation * highest;
    }
    return warmth / static_cast<double>(colours.total());
}

}  // namespace kvx::tool
