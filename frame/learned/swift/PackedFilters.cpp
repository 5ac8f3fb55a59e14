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
    int Weight(int row, int column, Colour colour, Along along, int tapRow, int tapColumn) const {
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

/** The two filters of a colour, for two sites. @return the place after them */
LaneWords* PutFilters(const Tile& tile, int row, const TapPair& taps, const SiteColour (&sites)[2], LaneWords* out) {
    LaneWords& columns = out[0];
    LaneWords& more = out[1];
    for (size_t i = 0; i < 4; ++i) {
        const SiteColour& site = sites[i / 2];
        const auto weight = [&](Along along) {
            return tile.Weight(row, site.column, site.colour, along, taps.rows[i % 2], taps.columns[i % 2]);
        };
        columns[i] = static_cast<int16_t>(4 * weight(Along::Columns));
        more[i] = static_cast<int16_t>(weight(Along::Rows) - weight(Along::Columns));
    }
    return out + 2;
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
    for (const TapPair& taps : hasPan ? std::span<const TapPair>(kTrueSenseTaps) : kBayerTaps) {
        colourEnd = PutFilters(tile, row, taps, {{first, swapped(first)}, {second, swapped(second)}}, colourEnd);
        colourEnd = PutFilters(tile, row, taps, {{first, other}, {second, other}}, colourEnd);
        if (!hasPan) continue;
        for (const Colour colour : {own, kGreen, other})
            panEnd = PutFilters(tile, row, taps, {{pan, colour}, {pan + 2, colour}}, panEnd);
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
