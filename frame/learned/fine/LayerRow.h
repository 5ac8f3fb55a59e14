/** One row of cells of a layer: sums of products of 16-bit words, exact in 32 bits. */
#pragma once

#include "frame/learned/fine/Network.h"

namespace kvx::frame {

/** Rows of cells have room for so many more than they hold: a row is computed in groups of cells. */
inline constexpr size_t kCellSlack = 8;

/** Three rows of cells, of which the first cell lies one to the left of the first that is computed. */
struct CellRows {
    const int16_t* rows[3];
};

/**
 * A hidden layer.
 *
 * @param skip  cells of the layer below at the same places, to be added; null: none
 * @param sigma deviation of the noise for each cell; null: 0
 * @param out   `cells` cells; as many as kCellSlack after them get any content
 */
void HiddenRow(const HiddenLayer& layer, const CellRows& in, const int16_t* skip, const int16_t* sigma, int16_t* out,
               size_t cells);

/**
 * The result, as unsigned words.
 *
 * @param hidden rows of the last hidden layer; `input`: rows of cells of the input
 * @param out    `cells` times last.outputs words, and room as above
 */
void ResultRow(const Network& network, const CellRows& hidden, const CellRows& input, uint16_t* out, size_t cells);

}  // namespace kvx::frame
