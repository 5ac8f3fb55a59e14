/** The source of a TrueSense conversion, row by row in the working area. */
#pragma once

#include "demosaicers/frame/TrueSenseFrame.h"

namespace kvx {

/**
 * Fills `line` with a row of the working area's raw mosaic, margins included.
 * @return true when all samples lie within 0 to 4095
 */
bool ReadSourceRow(const TrueSenseFrame& frame, int row, int16_t* line);

}  // namespace kvx
