#include "frame/learned/swift/PackedFilters.h"

#include <span>

namespace kvx::frame {
namespace {

enum Colour : size_t { kRed, kGreen, kBlue };

/** The tile as it repeats in memory: a mirrored frame is the frame of a mirrored tile. */
class Tile {
public:
    Tile(const SwiftFilters& filters, const SourceView& mosaic) : m_filters(filters), m_format(mosaic.format) {
        const auto side = static_cast<int>(filters.side);
        m_rowStep = mosaic.verMirrored ? -1 : 1;
        m_columnStep = mosaic.horMirrored ? -1 : 1;
        m_firstRow = m_format.phase / side + (mosaic.verMirrored ? mosaic.height - 1 : 0) % side;
        m_firstColumn = m_format.phase % side + (mosaic.horMirrored ? mosaic.width - 1 : 0) % side;
        m_format.phase = 0;
    }

    char Letter(int row, int column) const {
        const size_t site = Site(row, column);
        return FilterAt(m_format, static_cast<uint32_t>(site / m_filters.side),
                        static_cast<uint32_t>(site % m_filters.side));
    }
    int16_t Weight(int row, int column, Colour colour, Along along, int tapRow, int tapColumn) const {
        return m_filters.Weight(Site(row, column), colour, along, m_rowStep * tapRow, m_columnStep * tapColumn);
    }

private:
    size_t Site(int row, int column) const {
        const auto side = static_cast<int>(m_filters.side);
        const int tileRow = (m_firstRow + m_rowStep * row + 2 * side) % side;
        const int tileColumn = (m_firstColumn + m_columnStep * column + 2 * side) % side;
        return static_cast<size_t>(tileRow) * m_filters.side + static_cast<size_t>(tileColumn);
    }

    const SwiftFilters& m_filters;
    Format m_format;
    int m_rowStep, m_columnStep, m_firstRow, m_firstColumn;
};

struct SiteColour {
    int column;
    Colour colour;
};

/** A filter's weights of two taps, for two sites. */
LaneWords WeightsOf(const Tile& tile, int row, const TapPair& taps, Along along, const SiteColour (&sites)[2]) {
    LaneWords weights;
    for (size_t i = 0; i < weights.size(); ++i)
        weights[i] =
            tile.Weight(row, sites[i / 2].column, sites[i / 2].colour, along, taps.rows[i % 2], taps.columns[i % 2]);
    return weights;
}

PackedRow PackRow(const Tile& tile, int row, bool hasPan) {
    PackedRow packed{};
    for (int column = 0; column < 4; ++column) {
        const char letter = tile.Letter(row, column);
        if (letter == 'W') continue;
        packed.green[column] = letter == 'G' ? -1 : 0;
        packed.own[column] = letter == 'G' ? 0 : -1;
        if (letter != 'G') packed.ownIsRed = letter == 'R';
    }
    const Colour own = packed.ownIsRed ? kRed : kBlue, other = packed.ownIsRed ? kBlue : kRed;
    packed.firstPan = hasPan && tile.Letter(row, 0) != 'W' ? 1 : 0;
    const int first = hasPan && packed.firstPan == 0 ? 1 : 0, second = first + (hasPan ? 2 : 1);
    const auto swapped = [&](int column) { return packed.green[column] ? own : kGreen; };
    const auto pan = static_cast<int>(packed.firstPan);

    LaneWords *colourEnd = packed.colour.data(), *panEnd = packed.pan.data();
    for (const TapPair& taps : hasPan ? std::span<const TapPair>(kTrueSenseTaps) : kBayerTaps)
        for (const Along along : {Along::Rows, Along::Columns}) {
            *colourEnd++ = WeightsOf(tile, row, taps, along, {{first, swapped(first)}, {second, swapped(second)}});
            *colourEnd++ = WeightsOf(tile, row, taps, along, {{first, other}, {second, other}});
            if (!hasPan) continue;
            for (const Colour colour : {own, kGreen, other})
                *panEnd++ = WeightsOf(tile, row, taps, along, {{pan, colour}, {pan + 2, colour}});
        }
    return packed;
}

}  // namespace

std::array<PackedRow, 4> PackFilters(const SwiftFilters& filters, const SourceView& mosaic) {
    const Tile tile(filters, mosaic);
    std::array<PackedRow, 4> rows;
    for (int row = 0; row < 4; ++row) rows[row] = PackRow(tile, row, mosaic.format.family == Family::TrueSense);
    return rows;
}

}  // namespace kvx::frame
