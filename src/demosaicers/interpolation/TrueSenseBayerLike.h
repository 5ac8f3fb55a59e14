/** The Bayer-like TrueSense demosaicer: a half-size Bayer mosaic of colour differences, scaled up and added to pan. */
#pragma once

#include <optional>
#include <vector>

#include "demosaicers/interpolation/BayerLikeBand.h"
#include "demosaicers/interpolation/InterpolatingDemosaicer.h"

namespace kvx {

/**
 * Demosaicing and scaling of the differences give the bits of OpenCV's bilinear conversions. Its Bayer conversion gives
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
    bool ConvertBand(const TrueSenseWorkspace& workspace, const BayerLikeMemory& memory,
                     const class PixelWriter& writer, int begin, int end) const noexcept;
    std::optional<uint16_t> EvenColour() const noexcept;

    std::vector<BayerLikeMemory> m_memories;  // one for each thread
    int m_memoryWidth = 0;                    // the working width they have room for
    std::optional<uint16_t> m_evenColour;     // of a frame without colours of its own
};

}  // namespace kvx
