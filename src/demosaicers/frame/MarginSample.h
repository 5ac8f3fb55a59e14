/** Which sample takes the place of one that the source does not have. */
#pragma once

#include "demosaicers/frame/TrueSenseTile.h"

namespace kvx {

/**
 * Along one row or column of the working area: the place among the given ones, [first, first + length), whose sample
 * stands at `place`. Outside them that is the nearest one at a distance of whole tiles, which the pattern makes equal.
 * Fewer than four given places may not have it: then the nearest sample of the same kind, or else the nearest one.
 *
 * @param kindAt the kind of site by place
 */
template <class KindAtPlace>
constexpr int MarginSampleFor(int place, int first, int length, const KindAtPlace& kindAt) {
    const auto isGiven = [=](int p) { return p >= first && p < first + length; };
    if (isGiven(place)) return place;
    const bool isBefore = place < first;
    const int outside = isBefore ? first - place : place - (first + length - 1);
    const int tiles = (outside + kTileSize - 1) / kTileSize * kTileSize;
    const int equal = isBefore ? place + tiles : place - tiles;
    if (isGiven(equal)) return equal;
    const int inwards = isBefore ? 1 : -1, nearest = isBefore ? first : first + length - 1;
    for (int p = nearest; isGiven(p); p += inwards)
        if (kindAt(p) == kindAt(place)) return p;
    return nearest;
}

}  // namespace kvx
