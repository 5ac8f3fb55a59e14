/** Colour values become indices of the tone table: 0 to 4095. */
#pragma once

#include "demosaicers/frame/FixedMatrix.h"
#include "demosaicers/frame/TrueSenseFrame.h"

namespace kvx {

/**
 * Clamps the values of three planes.
 * @param indices room for `count` elements each and a vector more; the planes are read equally far
 */
void ToneIndices(const int16_t* const planes[kChannels], size_t count, uint16_t* const indices[kChannels]);

/**
 * Applies the matrix to each (red, green, blue), truncates towards zero and clamps; NaN becomes 0. The result is
 * that of double precision, with every product and sum rounded, from left to right.
 * @param fixed the same matrix, by FixedMatrixOf()
 */
void ToneIndices(const int16_t* const planes[kChannels], const ColourMatrix& matrix, const FixedMatrix& fixed,
                 size_t count, uint16_t* const indices[kChannels]);

}  // namespace kvx
