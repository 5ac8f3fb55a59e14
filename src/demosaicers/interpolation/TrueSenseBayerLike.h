/** The Bayer-like TrueSense demosaicer: a half-size Bayer mosaic of colour differences, scaled up and added to pan. */
#pragma once

#include <opencv2/core.hpp>

#include "demosaicers/interpolation/InterpolatingDemosaicer.h"

namespace kvx {

/**
 * Demosaicing and scaling of the differences are the image-processing library's, on whole frames. That conversion gives
 * black for fewer than three rows or columns: regions of one tile in a direction have no colour of their own.
 */
template <class T>
class TrueSenseBayerLike final : public InterpolatingDemosaicer<T> {
public:
    explicit TrueSenseBayerLike(int bandRows = kBandRows)
        : InterpolatingDemosaicer<T>({.oddDepths = true, .margin = 0}, bandRows) {}

    void CleanMemory() noexcept override;

private:
    int Reserve() noexcept override;
    int Convert() noexcept override;

    template <class Lane>
    bool Reduce(const TrueSenseWorkspace& workspace, int begin, int end) noexcept;
    void DemosaicDifferences();
    void WriteRows(const TrueSenseWorkspace& workspace, const class PixelWriter& writer, int begin, int end) noexcept;

    cv::Mat m_pan;                         // working size
    cv::Mat m_halfMosaic;                  // colour - pan of each 2x2 block: B G / G R
    cv::Mat m_positive, m_positiveColour;  // the same without a sign, and demosaiced
    cv::Mat m_halfColour, m_colour;        // differences red, green, blue at half size and at working size
};

}  // namespace kvx
