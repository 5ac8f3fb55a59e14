#pragma once

#include <array>
#include <opencv2/core.hpp>

#include "KvxFrame/Format.h"

namespace kvx::tool {

/**
 * Measures how well a mosaic format fits samples, by an analysis of variance. Sites with filters of one colour see the
 * same light and must agree, wherever they are in the tile; sites of different colours need not.
 *
 * The sixteen sites of a 4x4 tile give sixteen small smooth pictures of the scene, shifted to common positions. Their
 * differences at a position are due to the filters.
 */
class TileAnalysis {
public:
    /** @param samples CV_8UC1 or CV_16UC1, at least kSmallestSide in both directions; at most the middle is used */
    explicit TileAnalysis(const cv::Mat& samples);

    static constexpr int kSmallestSide = 16;

    /**
     * The share of the differences between sites that the colours of a mosaic or mono format explain: about 1 for the
     * right one (adjusted for the number of colours; 0 or less for one that explains nothing, and for mono).
     */
    double Explained(const frame::Format& format) const;

    /** How alike the sites of a tile are, as those of a mono frame: 1 when equal, 0 from half of the scene's own
     *  standard deviation on. */
    double Evenness() const;

    /** Standard deviation within a tile relative to the mean of the frame. */
    double Contrast() const;

    /**
     * Whether the colours that a format gives look like a scene: in most scenes strong colours are warm (red to
     * yellow: skin, wood, soil, lamps) rather than cold. Exchanging red and blue changes the sign. After white balance
     * by grey world. Weak evidence, and 0 for mono.
     */
    double Warmth(const frame::Format& format) const;

private:
    static constexpr int kSide = 4;
    static constexpr int kSites = kSide * kSide;
    using Sites = cv::Vec<float, kSites>;

    cv::Mat_<Sites> m_sites;
    double m_total = 0;  ///< mean square of a site's deviation from its tile's mean, 15 degrees of freedom
    double m_mean = 0;
    double m_scene = 0;  ///< mean square of a tile's deviation from the mean
};

}  // namespace kvx::tool
