/**
 * Rows of pan codes: noise is filtered, and the colour sites between them are interpolated.
 *
 * A row holds the codes of its pan sites densely, element k at column 2 k + parity, where parity is the row's; its
 * colour sites lie at the columns 2 k + 1 - parity. Elements -4 to -1 and four after the row hold the mirror image.
 */
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "pipeline/PanNoise.h"

namespace kvx {

/** How far windows look beyond a row of pan sites. */
constexpr int kPanMargin = 4;

/** Fills the margins of a row with the mirror image. */
void MirrorPanRow(int16_t* row, int parity, int sites) noexcept;

/** A row, and three rows on either side of it: -3 to 3. */
using PanWindow = std::array<const int16_t*, 7>;

/**
 * Filters a row.
 *
 * @param scratch as many floats as sites, and a vector more
 */
void FilterPanRow(const PanWindow& rows, int parity, size_t sites, const PanThresholds& thresholds, float* scratch,
                  int16_t* filtered) noexcept;

/** Sums of gradients along a row: of three and of two neighbouring colour sites, across and down. */
struct GradientRow {
    int16_t *across3, *down3, *across2, *down2;
};

/** @param scratch two rows with margins of a vector */
void SumGradients(const int16_t* row, const int16_t* up, const int16_t* down, int parity, size_t sites,
                  const std::array<int16_t*, 2>& scratch, const GradientRow& sums) noexcept;

/**
 * Pan codes at the colour sites of a row.
 *
 * @param gradients of the rows -2 to 2
 */
void InterpolatePanRow(const PanWindow& rows, const std::array<GradientRow, 5>& gradients, int parity, size_t sites,
                       int16_t* panAtColour) noexcept;

/** Pan and colour sites of a row in the order of the columns. */
void MergePanRow(const int16_t* pan, const int16_t* panAtColour, int parity, size_t sites, int16_t* columns) noexcept;

}  // namespace kvx
