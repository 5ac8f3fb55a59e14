/** Two rows of cells of a layer: sums of products of 16-bit words, exact in 32 bits. */
#pragma once

#include "frame/learned/fine/Network.h"

namespace kvx::frame {

/** Rows of cells have room for so many more than they hold: a row is computed in groups of cells. */
inline constexpr size_t kCellSlack = 8;

/** Squares of 2x2 cells that a layer computes together, at most. */
inline constexpr size_t kBlockTiles = 16;

/** Outputs that a layer computes together, at most. */
inline constexpr size_t kBlockOutputs = 6 * kFilterGroup;

/** Four rows of cells, of which the first cell lies one to the left of the first that is computed. */
struct CellRows {
    const int16_t* rows[4];
};

template <class Word>
struct RowPair {
    Word* rows[2];
};

/** Memory for what lies between two steps of a layer: transformed cells, and sums. */
class LayerMemory {
public:
    explicit LayerMemory(const Network& network);

    int16_t* Cells() {
        return m_cells.data();
    }
    int32_t* Products() {
        return m_products.data();
    }
    int32_t* BaseSums() {
        return m_baseSums.data();
    }

private:
    AlignedVector<int16_t> m_cells;
    AlignedVector<int32_t> m_products, m_baseSums;
};

/**
 * A hidden layer.
 *
 * @param skip  cells of the layer below at the same places, to be added; null rows: none
 * @param sigma deviation of the noise for each cell; null rows: 0
 * @param out   `cells` cells; as many as kCellSlack after them get any content
 */
void HiddenRows(const HiddenLayer& layer, const CellRows& in, const RowPair<const int16_t>& skip,
                const RowPair<const int16_t>& sigma, const RowPair<int16_t>& out, size_t cells, LayerMemory& memory);

/**
 * The result, as unsigned words.
 *
 * @param hidden rows of the last hidden layer; `input`: rows of cells of the input
 * @param out    `cells` times last.outputs words, and room as above
 */
void ResultRows(const Network& network, const CellRows& hidden, const CellRows& input, const RowPair<uint16_t>& out,
                size_t cells, LayerMemory& memory);

}  // namespace kvx::frame
