/** Colour values become indices of the tone table: 0 to 4095. */
#pragma once

#include "demosaicers/frame/FixedMatrix.h"
#include "demosaicers/frame/TrueSenseFrame.h"

namespace kvx {

/**
 * Clamps the values of three planes.
 * @param indices take `count` elements each and up to a vector of waste; the planes are read as far
 */
void ToneIndices(const int16_t* const planes[kChannels], size_t count, uint16_t* const indices[kChannels]);

/**
 * Applies the matrix to each (red, green, blue), truncates towards zero and clamps; what is not a number becomes 0. The
 * result is that of double precision with each product and sum rounded, from left to right.
 * @param fixed the same matrix, by FixedMatrixOf()
 */
void ToneIndices(const int16_t* const planes[kChannels], const ColourMatrix& matrix, const FixedMatrix& fixed,
                 size_t count, uint16_t* const indices[kChannels]);

}  // namespace kvx
