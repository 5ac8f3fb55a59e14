/** The noise of a frame, measured in the frame itself. */
#pragma once

#include <vector>

#include "KvxFrame/SensorNoise.h"
#include "KvxFrame/View.h"

namespace kvx::frame {

class FrameNoise {
public:
    /**
     * Fits a line to the noise of samples of similar brightness, the median of their differences from the mean of the
     * two neighbours of their filter colour in the row. Detail counts as noise where it prevails.
     *
     * @param frame a valid view
     * @param black sample value from which the signal counts
     */
    NoiseLine Measure(const SourceView& frame, double black);

private:
    static constexpr size_t kLevels = 32;         // of brightness
    static constexpr size_t kDifferences = 2048;  // the last one stands for all larger ones

    double Median(size_t level, uint64_t count) const;

    std::vector<uint16_t> m_row;
    std::vector<uint32_t> m_counts;  // of differences, for each level of brightness
};

}  // namespace kvx::frame
