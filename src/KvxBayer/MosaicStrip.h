/** Bilinear and edge-aware conversion of a frame whose rows the caller exchanges, in strips that stay in the cache. */
#pragma once

#include <array>
#include <cstdint>

#include "KvxBayer/BayerJob.h"
#include "KvxBayer/MosaicRow.h"

namespace kvx {

/** Columns of a strip at most. Three rows of samples and one of pixels need half of a first-level cache. */
constexpr int64_t kStripColumns = 1024;

/** The memory of a thread, which takes rows from top to bottom. */
class MosaicStrip {
public:
    MosaicStrip(const BayerJob& job, GreenRule rule) : m_job(job), m_rule(rule) {}

    /**
     * Converts rows [firstRow, endRow) of columns [firstColumn, endColumn), at most kStripColumns. The frame has at
     * least three rows and columns; a strip that ends at its right border has at least two columns.
     */
    void Convert(int64_t firstRow, int64_t endRow, int64_t firstColumn, int64_t endColumn);

private:
    static constexpr int64_t kLength = kStripColumns + 2 + KVX_ROW_PADDING / sizeof(uint16_t);

    void ReadUntil(int64_t row);
    void ComputeRow(int64_t centre);

    const BayerJob& m_job;
    GreenRule m_rule;
    int64_t m_left = 0, m_width = 0;  // of the columns that are read: the strip and its neighbours
    int64_t m_nextRow = 0;            // to be read
    // Rows are used in turn; what lies behind them is read, but has no effect.
    alignas(64) std::array<std::array<uint16_t, kLength>, 3> m_samples{};
    alignas(64) std::array<std::array<uint16_t, kLength>, 3> m_planes{};
};

}  // namespace kvx
