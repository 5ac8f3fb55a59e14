#include "frame/GainMeter.h"

#include <algorithm>
#include <array>

#include "frame/Fail.h"
#include "frame/SampleRow.h"

namespace kvx::frame {
namespace {

constexpr uint32_t kClipped = 65536 - 1024;  // of 16 bits
constexpr double kLargestGain = 16;
constexpr uint32_t kLargestTile = 4;

/** 0 to 2 for red, green and blue; -1 for a clear site. */
int ColourAt(const SourceView& source, uint32_t row, uint32_t column) {
    switch (StoredFilterAt(source, row, column)) {
        case 'R':
            return 0;
        case 'G':
            return 1;
        case 'B':
            return 2;
        default:
            return -1;
    }
}

double Limited(double gain) {
    return std::clamp(gain, 1 / kLargestGain, kLargestGain);
}

/** Gains that bring the levels to green's; none below 1, so that what is clipped stays white. */
Gains GainsFor(const std::array<double, 3>& levels) {
    if (levels[1] <= 0) return {};
    const double red = levels[0] > 0 ? Limited(levels[1] / levels[0]) : kLargestGain;
    const double blue = levels[2] > 0 ? Limited(levels[1] / levels[2]) : kLargestGain;
    const double smallest = std::min({red, 1.0, blue});
    return {Limited(red / smallest), 1 / smallest, Limited(blue / smallest), 1 / smallest};
}

}  // namespace

/** Adds the whole tiles of the rows from `firstRow` on, as many as a tile has. */
void GainMeter::Count(const SourceView& source, uint32_t firstRow, uint32_t black) {
    const uint32_t side = TileSide(source.format), width = source.width;
    const int leftShift = 16 - source.format.bits;
    std::array<int, kLargestTile * kLargestTile> colours{};
    for (uint32_t site = 0; site < side * side; ++site)
        colours[site] = ColourAt(source, firstRow + site / side, site % side);
    for (uint32_t row = 0; row < side; ++row) ReadRow(source, firstRow + row, m_rows.data() + size_t{row} * width);

    for (uint32_t left = 0; left + side <= width; left += side) {
        std::array<uint32_t, kLargestTile * kLargestTile> values{};
        bool isClipped = false;
        for (uint32_t site = 0; site < side * side; ++site) {
            values[site] = uint32_t{m_rows[size_t{site / side} * width + left + site % side]} << leftShift;
            isClipped = isClipped || (colours[site] >= 0 && values[site] >= kClipped);
        }
        if (isClipped) continue;
        for (uint32_t site = 0; site < side * side; ++site) {
            if (colours[site] < 0) continue;
            const uint32_t light = values[site] > black ? values[site] - black : 0;
            m_totals[colours[site]].sum += light;
            ++m_totals[colours[site]].count;
            ++m_histograms[colours[site] * kBins + light / (65536 / kBins)];
        }
    }
}

double GainMeter::Mean(int colour) const {
    const auto& total = m_totals[colour];
    return total.count == 0 ? 0 : static_cast<double>(total.sum) / static_cast<double>(total.count);
}

/** The upper end of the bin that reaches 99 % of the samples. */
double GainMeter::Percentile(int colour) const {
    const uint64_t wanted = m_totals[colour].count * 99 / 100;
    uint64_t seen = 0;
    for (int bin = 0; bin < kBins; ++bin) {
        seen += m_histograms[colour * kBins + bin];
        if (seen > wanted) return bin + 1;
    }
    return 0;
}

Gains GainMeter::Measure(const SourceView& source, uint32_t blackLevel, WhiteBalance method) {
    const uint32_t side = TileSide(source.format);
    if (side == 1) return {};
    m_rows.resize(size_t{side} * source.width);
    m_histograms.assign(size_t{kColours} * kBins, 0);
    for (auto& total : m_totals) total = {};
    const uint32_t black = blackLevel << (16 - source.format.bits);
    for (uint32_t row = 0; row + side <= source.height; row += side) Count(source, row, black);
    std::array<double, 3> levels{};
    for (int colour = 0; colour < kColours; ++colour)
        levels[colour] = method == WhiteBalance::GreyWorld ? Mean(colour) : Percentile(colour);
    return GainsFor(levels);
}

Gains MeasureGains(const SourceView& source, uint32_t blackLevel, WhiteBalance method) {
    Validate(source);
    if (blackLevel >= White(source.format))
        Fail(KvxResult_InvalidArgument, "a black level of {} leaves nothing of {}: white is {}", blackLevel,
             Name(source.format), White(source.format));
    if (method == WhiteBalance::Given) Fail(KvxResult_InvalidArgument, "nothing to measure: choose a method");
    return GainMeter().Measure(source, blackLevel, method);
}

}  // namespace kvx::frame
