/** From half to full resolution. */
#pragma once

#include "pipeline/LogText.h"

namespace kvx {

/** Every value goes to the four pixels of its 2x2 cell. */
void CopyToCells(const int32_t* low, int32_t w2, int32_t h2, int32_t* out) noexcept;

/** Smooths a plane of 2 w2 x 2 h2 values in both directions. @return kStageSuccess or kStageFailure */
int32_t SmoothCells(int32_t* plane, int32_t w2, int32_t h2, LogText_t* log) noexcept;

}  // namespace kvx
