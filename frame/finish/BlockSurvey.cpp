#include "frame/finish/BlockSurvey.h"

#include <algorithm>

#include "frame/finish/Balance.h"
#include "frame/samples/SampleRow.h"

namespace kvx::frame {
namespace {

constexpr uint32_t kBlocks = 192, kTileRows = 512;
constexpr size_t kLargestTile = 4, kFilters = 4;

/** Means of the colours above black. @param counts sites of each filter in a block */
Block BlockOf(const std::array<uint64_t, kFilters>& samples, const std::array<uint32_t, kFilters>& counts,
              bool isClipped, const WideLevels& levels, Family family) {
    std::array<float, kFilters> light{};
    for (size_t filter = 0; filter < kFilters; ++filter) {
        const double sites = std::max(counts[filter], 1u), range = levels.white[filter] - levels.black[filter];
        const double above = static_cast<double>(samples[filter]) / sites - levels.black[filter];
        light[filter] = static_cast<float>(std::max(above, 0.0) / range);
    }
    if (family == Family::Bayer) return {{light[0], (light[1] + light[2]) / 2, light[3]}, isClipped};
    if (family == Family::TrueSense) return {{light[0], light[1], light[2]}, isClipped};
    return {{light[3], light[3], light[3]}, isClipped};
}

}  // namespace

const std::vector<Block>& BlockSurvey::Measure(const SourceView& source, const Finish& finish) {
    m_blocks.clear();
    const uint32_t tile = TileSide(source.format), tileRows = source.height / tile;
    const uint32_t tiles = std::max(1u, std::min(source.width / tile, tileRows) / kBlocks);
    const uint32_t side = tiles * tile, columns = source.width / side;
    const uint32_t step = side * std::max(1u, tileRows / kTileRows);
    const WideLevels levels(finish, source.format);
    const bool hasClearSites = source.format.family == Family::TrueSense;
    std::array<uint32_t, kFilters> clipped{};
    for (size_t i = 0; i < kFilters; ++i) clipped[i] = levels.white[i] - levels.white[i] / 64;
    if (hasClearSites) clipped[3] = UINT32_MAX;

    const int shift = 16 - source.format.bits;
    m_row.resize(source.width);
    for (uint32_t top = 0; top + side <= source.height; top += step) {
        m_band.assign(columns, {});
        std::array<uint32_t, kFilters> counts{};
        for (uint32_t row = top; row < top + side; ++row) {
            std::array<size_t, kLargestTile> filters{};
            for (uint32_t column = 0; column < tile; ++column) {
                filters[column] = FilterIndex(source, row, column);
                counts[filters[column]] += tiles;
            }
            ReadRow(source, row, m_row.data());
            const uint16_t* sample = m_row.data();
            for (Sums& sums : m_band)
                for (uint32_t site = 0; site < tiles; ++site)
                    for (uint32_t column = 0; column < tile; ++column) {
                        const size_t filter = filters[column];
                        const uint32_t value = uint32_t{*sample++} << shift;
                        sums.samples[filter] += value;
                        sums.isClipped = sums.isClipped || value >= clipped[filter];
                    }
        }
        for (const Sums& sums : m_band)
            m_blocks.push_back(BlockOf(sums.samples, counts, sums.isClipped, levels, source.format.family));
    }
    return m_blocks;
}

}  // namespace kvx::frame
