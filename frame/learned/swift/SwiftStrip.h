/** Runs "swift" down a strip of a frame, row by row, in working memory that stays in cache. */
#pragma once

#include <array>
#include <cstdint>

#include "KvxDemosaicing/KvxRows.h"
#include "KvxFrame/View.h"
#include "frame/learned/RowRing.h"
#include "frame/learned/swift/SwiftRows.h"

namespace kvx::frame {

/** A frame, where its pixels go, and the filters of its rows. */
struct SwiftFrame {
    /** @param source whose format, size and mirror flags count */
    SwiftFrame(const SwiftFilters& filters, const SourceView& source, const KvxRowSource& sourceRows,
               uint8_t pictureBits, const KvxPixelSink& pixelSink);

    SourceView mosaic;
    KvxRowSource mosaicRows;
    int bits;  ///< of the pixels
    KvxPixelSink sink;
    std::array<PackedRow, 4> rows;
    int shift;     ///< of the filters' sums
    int depth;     ///< of the samples that the rows' loops see
    bool isSplit;  ///< whether they see them in two parts
};

class SwiftStrip {
public:
    /** At most. The working rows stay in the second-level cache; long rows of the frame are fetched ahead. */
    static constexpr size_t kColumns = 2048;

    /** @throws std::bad_alloc */
    SwiftStrip();

    /** Rows `top` to `bottom` - 1 of the pixels in `columns` columns from `left` on, a multiple of 4. */
    void Run(const SwiftFrame& frame, int64_t top, int64_t bottom, int64_t left, size_t columns);

private:
    SampleRow Samples(const SwiftFrame& frame, int64_t row);
    GradientRow Gradients(int64_t row);
    GradientRow GradientSums();

    void ReadRow(const SwiftFrame& frame, int64_t row, int64_t left, size_t columns);
    /** Of a row; and sums over it and the two above. */
    void ComputeGradients(const SwiftFrame& frame, int64_t row, size_t columns);
    void ComputePixels(const SwiftFrame& frame, int64_t row, int64_t left, size_t columns);

    RowRing<int16_t> m_samples, m_lower, m_levels;
    RowRing<uint16_t> m_words, m_alongRows, m_alongColumns, m_gradientSums, m_mix, m_pixels;
};

}  // namespace kvx::frame
