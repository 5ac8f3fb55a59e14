/** Which sample stands for one in the margin of the working area. */
#pragma once

#include "demosaicers/frame/TrueSenseTile.h"

namespace kvx {

/**
 * Along one row or column of the working area: the place within the region, [first, first + length), whose sample
 * stands at `place`. In the margin that is the one four places on, which the pattern makes equal. A region of fewer
 * than four places may not have it: then the nearest sample of the same kind, or else the nearest one.
 *
 * @param kindAt the kind of site by place
 */
template <class KindAtPlace>
constexpr int MarginSampleFor(int place, int first, int length, const KindAtPlace& kindAt) {
    const auto isInside = [=](int p) { return p >= first && p < first + length; };
    if (isInside(place)) return place;
    const int inwards = place < first ? 1 : -1;
    if (isInside(place + inwards * kTileSize)) return place + inwards * kTileSize;
    const int nearest = place < first ? first : first + length - 1;
    for (int p = nearest; isInside(p); p += inwards)
        if (kindAt(p) == kindAt(place)) return p;
    return nearest;
}

}  // namespace kvx
