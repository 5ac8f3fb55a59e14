#include "frame/finish/BlockSurvey.h"

#include <algorithm>

#include "frame/finish/Balance.h"
#include "frame/samples/SampleRow.h"

namespace kvx::frame {
namespace {

constexpr uint32_t kBlocks = 192, kTileRows = 256;
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

/** Adds a row to the sums of its place in the tiles, column by column: loops that compilers make vectors of. */
void BlockSurvey::AddRow(const SourceView& source, uint32_t row, Columns& columns) {
    ReadRow(source, row, m_row.data());
    const uint16_t* const samples = m_row.data();
    uint32_t* const sums = columns.sums.data();
    uint16_t* const largest = columns.largest.data();
    for (size_t column = 0, width = source.width; column < width; ++column) sums[column] += samples[column];
    for (size_t column = 0, width = source.width; column < width; ++column)
        largest[column] = std::max(largest[column], samples[column]);
}

const std::vector<Block>& BlockSurvey::Measure(const SourceView& source, const Finish& finish) {
    m_blocks.clear();
    const uint32_t tile = TileSide(source.format), tileRows = source.height / tile;
    const uint32_t tiles = std::max(1u, std::min(source.width / tile, tileRows) / kBlocks);
    const uint32_t side = tiles * tile, step = side * std::max(1u, tileRows / kTileRows);
    const WideLevels levels(finish, source.format);
    const int shift = 16 - source.format.bits;
    std::array<uint32_t, kFilters> clipped{};
    for (size_t i = 0; i < kFilters; ++i) clipped[i] = levels.white[i] - levels.white[i] / 64;
    if (source.format.family == Family::TrueSense) clipped[3] = UINT32_MAX;  // clear sites do not count

    std::array<std::array<size_t, kLargestTile>, kLargestTile> filters{};
    std::array<uint32_t, kFilters> counts{};
    for (uint32_t row = 0; row < tile; ++row)
        for (uint32_t column = 0; column < tile; ++column) {
            filters[row][column] = FilterIndex(source, row, column);
            counts[filters[row][column]] += tiles * tiles;
        }
    m_row.resize(source.width);
    m_columns.resize(tile);
    for (uint32_t top = 0; top + side <= source.height; top += step) {
        for (Columns& columns : m_columns) {
            columns.sums.assign(source.width, 0);
            columns.largest.assign(source.width, 0);
        }
        for (uint32_t row = 0; row < side; ++row) AddRow(source, top + row, m_columns[row % tile]);
        for (uint32_t left = 0; left + side <= source.width; left += side) {
            std::array<uint64_t, kFilters> samples{};
            bool isClipped = false;
            for (uint32_t row = 0; row < tile; ++row)
                for (uint32_t place = 0; place < tile; ++place) {
                    const Columns& columns = m_columns[row];
                    uint64_t sum = 0;
                    uint32_t largest = 0;
                    for (uint32_t column = left + place; column < left + side; column += tile) {
                        sum += columns.sums[column];
                        largest = std::max(largest, uint32_t{columns.largest[column]});
                    }
                    const size_t filter = filters[row][place];
                    samples[filter] += sum << shift;
                    isClipped = isClipped || largest << shift >= clipped[filter];
                }
            m_blocks.push_back(BlockOf(samples, counts, isClipped, levels, source.format.family));
        }
    }
    return m_blocks;
}

}  // namespace kvx::frame
