#include "frame/finish/WhiteBalanceEstimator.h"

#include <algorithm>
#include <array>

#include "frame/base/Fail.h"
#include "frame/finish/Balance.h"
#include "frame/samples/SampleRow.h"

namespace kvx::frame {
namespace {

constexpr double kLargestGain = 16;
constexpr size_t kMostSites = 16;  // of a tile
/** In tall frames evenly spaced rows of tiles are measured, fewer than twice this number. */
constexpr uint32_t kMostTileRows = 256;

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

/** Gains that make the levels equal to green's; none is below 1, so that clipped samples stay white. */
Gains GainsFor(const std::array<uint64_t, 3>& levels) {
    if (levels[1] == 0) return {};
    const auto green = static_cast<double>(levels[1]);
    const double red = levels[0] > 0 ? Limited(green / static_cast<double>(levels[0])) : kLargestGain;
    const double blue = levels[2] > 0 ? Limited(green / static_cast<double>(levels[2])) : kLargestGain;
    const double smallest = std::min({red, 1.0, blue});
    return {Limited(red / smallest), 1 / smallest, Limited(blue / smallest), 1 / smallest};
}

}  // namespace

/** Adds the complete tiles of the row of tiles that starts at `firstRow`. */
void WhiteBalanceEstimator::Count(const SourceView& source, uint32_t firstRow, uint32_t black, uint32_t clipped) {
    const uint32_t side = TileSide(source.format), width = source.width;
    const int leftShift = 16 - source.format.bits;
    std::array<int, kMostSites> colours{};
    std::array<size_t, kMostSites> offsets{};  // in m_rows, from the tile's left edge
    std::array<uint32_t, kColours> sites{};
    for (uint32_t site = 0; site < side * side; ++site) {
        colours[site] = ColourAt(source, firstRow + site / side, site % side);
        offsets[site] = size_t{site / side} * width + site % side;
        if (colours[site] >= 0) ++sites[colours[site]];
    }
    for (uint32_t row = 0; row < side; ++row) ReadRow(source, firstRow + row, m_rows.data() + size_t{row} * width);

    for (uint32_t left = 0; left + side <= width; left += side) {
        std::array<uint32_t, kColours> light{};
        bool isClipped = false;
        for (uint32_t site = 0; site < side * side; ++site) {
            if (colours[site] < 0) continue;
            const uint32_t value = uint32_t{m_rows[offsets[site] + left]} << leftShift;
            isClipped = isClipped || value >= clipped;
            light[colours[site]] += value > black ? value - black : 0;
        }
        if (isClipped) continue;
        uint32_t brightness = 0;
        for (int colour = 0; colour < kColours; ++colour) {
            light[colour] /= std::max(sites[colour], 1u);  // each tile has all three
            brightness += light[colour];
        }
        Bin& bin = m_bins[brightness / kColours / (65536 / kBins)];
        for (int colour = 0; colour < kColours; ++colour) bin.sums[colour] += light[colour];
        ++bin.count;
    }
}

/** Sum of the brightest tiles, at least this share of all tiles. */
WhiteBalanceEstimator::Bin WhiteBalanceEstimator::Brightest(double share) const {
    uint64_t all = 0;
    for (const Bin& bin : m_bins) all += bin.count;
    Bin brightest{};
    for (size_t i = m_bins.size();
         i-- > 0 && static_cast<double>(brightest.count) < share * static_cast<double>(all);) {
        for (int colour = 0; colour < kColours; ++colour) brightest.sums[colour] += m_bins[i].sums[colour];
        brightest.count += m_bins[i].count;
    }
    return brightest;
}

Gains WhiteBalanceEstimator::Estimate(const SourceView& source, const Finish& finish) {
    const uint32_t side = TileSide(source.format);
    if (side == 1) return {};
    m_rows.resize(size_t{side} * source.width);
    m_bins.assign(kBins, {});
    const int leftShift = 16 - source.format.bits;
    const uint32_t black = finish.blackLevel << leftShift;
    const uint32_t white = WhiteLevel(finish, source.format) << leftShift;
    const uint32_t clipped = white - white / 64;
    const uint32_t step = side * std::max(1u, source.height / side / kMostTileRows);
    for (uint32_t row = 0; row + side <= source.height; row += step) Count(source, row, black, clipped);
    return GainsFor(Brightest(finish.whiteBalance == WhiteBalance::WhitePatch ? 0.01 : 1).sums);
}

Gains MeasureGains(const SourceView& source, const Finish& finish) {
    Validate(source);
    CheckLevels(source, finish);
    if (finish.whiteBalance == WhiteBalance::Given)
        Fail(KvxResult_InvalidArgument, "nothing to measure: choose grey world or white patch");
    return WhiteBalanceEstimator().Estimate(source, finish);
}

}  // namespace kvx::frame
