#pragma once

#include <string>

#include "tools/Formats.h"

namespace kvx::tool {

/** The repeating pattern of colour filters in front of a sensor. */
class FilterTile {
public:
    /** For an unpacked mosaic format. */
    explicit FilterTile(const PixelFormat& format);

    /** 'R', 'G' or 'B'; 'W' for a clear filter, 'Y' for none. */
    char At(int row, int column) const {
        return m_letters[(row + m_rowPhase) % m_side * m_side + (column + m_columnPhase) % m_side];
    }

    /** Rows and columns until the pattern repeats: 1, 2 or 4. */
    int Side() const {
        return m_side;
    }

private:
    std::string m_letters;  // row by row
    int m_side;
    int m_rowPhase;
    int m_columnPhase;
};

}  // namespace kvx::tool
