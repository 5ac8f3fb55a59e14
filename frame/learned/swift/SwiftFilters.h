/** The filters of "swift" (training/README.md, "`swift` in integers"). */
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "KvxFrame/Format.h"

namespace kvx::frame {

/** Rows and columns on each side of a pixel that its filters read. */
inline constexpr int kSwiftReach = 3;

enum class Along : uint8_t { Rows, Columns };

struct SwiftFilters {
    size_t side;  ///< of the tile
    int shift;    ///< sums are divided by 2^shift
    std::vector<int16_t> weights;

    /** A weight of the filter for a colour (0 to 2: red, green, blue) at a site of the tile, at most kSwiftReach away.
     */
    int16_t Weight(size_t site, size_t colour, Along along, int row, int column) const;
};

/**
 * Reads a file of weights.
 *
 * @throws Error 0x80070003 for one whose filters the rows' loops cannot run without overflow
 */
SwiftFilters ReadSwiftFilters(std::span<const uint8_t> file);

/** The filters for the frames of a family, made at the first use. Bayer and TrueSense only. */
const SwiftFilters& SwiftFiltersFor(Family family);

}  // namespace kvx::frame
