#include "frame/camera/FrameNoise.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

#include "frame/samples/SampleRow.h"

namespace kvx::frame {
namespace {

constexpr uint32_t kMostRows = 256;  // evenly spaced in tall frames
constexpr uint8_t kFinestBits = 12;  // of differences
constexpr uint64_t kEnough = 200;    // samples of a level of brightness
/** The deviation of a normal distribution for its median absolute value; that of 2p - a - b for one sample's. */
constexpr double kOfMedian = 1.4826, kOfDifference = 2.449489743;

}  // namespace

/** The middle of the differences; within a step of whole numbers in proportion. */
double FrameNoise::Median(size_t level, uint64_t count) const {
    const uint32_t* const counts = m_counts.data() + level * kDifferences;
    double before = 0;
    size_t difference = 0;
    while (before + counts[difference] < static_cast<double>(count) / 2) before += counts[difference++];
    // Each whole number stands for a step around it; 0 for half a step.
    const double share = (static_cast<double>(count) / 2 - before) / counts[difference];
    return difference == 0 ? share / 2 : static_cast<double>(difference) - 0.5 + share;
}

NoiseLine FrameNoise::Measure(const SourceView& frame, double black) {
    const uint32_t period = TileSide(frame.format) == 4 ? 4 : 2, width = frame.width;
    const int bits = frame.format.bits, coarser = std::max(bits - kFinestBits, 0);
    m_row.resize(width);
    m_counts.assign(kLevels * kDifferences, 0);
    std::array<uint64_t, kLevels> count{}, sum{};
    // An odd step visits all rows of the tile.
    for (uint32_t row = 0; row < frame.height; row += frame.height / kMostRows | 1) {
        ReadRow(frame, row, m_row.data());
        for (uint16_t& sample : m_row) sample = std::min(sample, static_cast<uint16_t>(White(frame.format)));
        for (uint32_t column = period; column + period < width; ++column) {
            const int both = m_row[column - period] + m_row[column + period];
            const size_t level = size_t(both) * kLevels >> (bits + 1);
            const auto difference = static_cast<size_t>(std::abs(2 * m_row[column] - both) >> coarser);
            ++m_counts[level * kDifferences + std::min(difference, kDifferences - 1)];
            ++count[level];
            sum[level] += both;
        }
    }
    // Weighted least squares: the relative error of a variance falls with the square root of the number of samples.
    const double scale = 4095.0 / White(frame.format);  // noise lines count in 12-bit values
    double weights = 0, x = 0, y = 0, xx = 0, xy = 0;
    for (size_t level = 0; level < kLevels; ++level) {
        if (count[level] < kEnough) continue;
        const double signal = (static_cast<double>(sum[level]) / 2 / static_cast<double>(count[level]) - black) * scale;
        const double deviation = std::ldexp(Median(level, count[level]), coarser) * kOfMedian / kOfDifference * scale;
        const double variance = std::max(deviation * deviation, scale * scale / 12);  // that of rounding
        const double weight = static_cast<double>(count[level]) / (variance * variance);
        weights += weight;
        x += weight * signal;
        y += weight * variance;
        xx += weight * signal * signal;
        xy += weight * signal * variance;
    }
    if (weights == 0) return {0, scale * scale / 12};
    const double spread = weights * xx - x * x;
    const double slope = spread > 0 ? std::max((weights * xy - x * y) / spread, 0.0) : 0;
    return {slope, std::max((y - slope * x) / weights, scale * scale / 12)};
}

}  // namespace kvx::frame
