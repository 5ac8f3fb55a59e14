/**
 * Step 6: the missing red and blue.
 *
 * Each of the four nearest sites with the colour gives an estimate: its colour, moved along the slope from its green to
 * the green here. An estimate weighs more the less green and the colour differences change in its direction.
 */
#pragma once

#include "KvxBayer/ipp/Lanes.h"

namespace kvx::ipp {

/** The colour sites of a row after steps 4 and 5. */
struct ColourRowData {
    const float* green;
    const float* own;    ///< the row's own colour - green
    const float* other;  ///< the other colour - green: the result of OtherColourRow()
    const float* slope;  ///< of the row's own colour
};

/**
 * The other colour at the colour sites, from the diagonal neighbours, as its difference from green.
 * @param rows y - 3, y - 1, y, y + 1, y + 3; @param phase of row y
 */
void OtherColourRow(const ColourRowData rows[5], int phase, float maximum, int lanes, float* other);

/** The row's missing red and blue, not clamped: "own" is the colour of its colour sites, "other" the next row's. */
struct MissingColours {
    float* ownAtGreen;
    float* otherAtGreen;
    float* otherAtColour;
};

/**
 * Both colours at the green sites, from the neighbours to the sides and above and below.
 * @param rows as above; @param mosaic samples of the green sites
 */
void ColoursAtGreenRow(const ColourRowData rows[5], const float* mosaic, int phase, int lanes,
                       const MissingColours& out);

}  // namespace kvx::ipp
