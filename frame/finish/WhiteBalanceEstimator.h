/** Measures the white balance of frames; keeps its memory between frames. */
#pragma once

#include <array>
#include <vector>

#include "KvxFrame/Finish.h"

namespace kvx::frame {

class WhiteBalanceEstimator {
public:
    /** As MeasureGains(), for a valid view and levels that fit it. */
    Gains Estimate(const SourceView& source, const Finish& finish);

private:
    static constexpr int kBins = 4096;
    static constexpr int kColours = 3;

    /** Tiles of similar brightness: sums of their mean colours, 16-bit values above black. */
    struct Bin {
        std::array<uint64_t, kColours> sums;
        uint64_t count;
    };

    void Count(const SourceView& source, uint32_t firstRow, uint32_t black, uint32_t clipped);
    Bin Brightest(double share) const;

    std::vector<uint16_t> m_rows;
    std::vector<Bin> m_bins;  // by brightness
};

}  // namespace kvx::frame
