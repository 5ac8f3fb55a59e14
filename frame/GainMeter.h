/** Finds the white balance of frames; keeps its memory from frame to frame. */
#pragma once

#include <vector>

#include "KvxFrame/Finish.h"

namespace kvx::frame {

class GainMeter {
public:
    /** As MeasureGains(), of a valid view. */
    Gains Measure(const SourceView& source, uint32_t blackLevel, WhiteBalance method);

private:
    static constexpr int kBins = 4096;
    static constexpr int kColours = 3;

    void Count(const SourceView& source, uint32_t firstRow, uint32_t black);
    double Mean(int colour) const;
    double Percentile(int colour) const;

    std::vector<uint16_t> m_rows;
    std::vector<uint32_t> m_histograms;  // kColours x kBins
    struct {
        uint64_t sum, count;
    } m_totals[kColours];
};

}  // namespace kvx::frame
