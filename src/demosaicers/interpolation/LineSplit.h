/** A raw row of the working area, split into its halves. */
#pragma once

#include "demosaicers/interpolation/HalfRows.h"

namespace kvx {

/** The columns of `line` two by two: `even` and `odd` have room for `pairs` elements each and a vector more. */
void SplitLine(const int16_t* line, size_t pairs, int16_t* even, int16_t* odd);
void SplitLine(const int16_t* line, size_t pairs, int32_t* even, int32_t* odd);

}  // namespace kvx
