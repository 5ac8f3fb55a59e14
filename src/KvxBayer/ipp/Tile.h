/** A block of the picture, computed row by row through all steps. */
#pragma once

#include <memory>

#include "KvxBayer/BayerJob.h"
#include "KvxBayer/ipp/SampleRow.h"
#include "KvxBayer/ipp/Source.h"
#include "KvxBayer/ipp/TileMemory.h"

namespace kvx::ipp {

/** One frame's conversion: what all its tiles share. */
struct Frame {
    BayerJob job;
    Source source;  // the job's, or a copy of two rows and columns
    SampleScale scale;
};

/** The pixels of a tile. Both origins are even, so that every tile starts with the frame's pattern. */
struct TileArea {
    int firstRow, rows;
    int firstColumn, columns;
};

constexpr int kMaxTileColumns = 2 * (kMaxLanes - 2 * kMarginLanes);

/** Computes tiles, one after the other; each thread has its own. */
class TileWorker {
public:
    /** @return null without memory */
    static std::unique_ptr<TileWorker> Create();

    void Compute(const Frame& frame, const TileArea& area);

private:
    TileWorker(hwy::AlignedFreeUniquePtr<float[]> memory, std::unique_ptr<uint8_t[]> rowBytes);

    // The steps, in their order; each computes one row. Row 0 is kReach rows above the tile's first.
    void TakeSamples(int row);
    void FindDifferences(int row);
    void SmoothDifferences(int row);
    void MeasureActivity(int row);
    void JudgeDirections(int row);
    void FindGreen(int row);
    void MultiplySteps(int row);
    void FitSlope(int row);
    void FindOtherColour(int row);
    void WritePixels(int row);

    void Store(const PairRow channels[3], int frameRow);
    void WritePlanes(const PairRow channels[3], int frameRow);

    int Phase(int row) const;
    ColourRowData ColourData(int row) const;

    hwy::AlignedFreeUniquePtr<float[]> m_memory;
    std::unique_ptr<uint8_t[]> m_rowBytes;  // samples on their way in or out
    TilePlanes m_planes;
    const Frame* m_frame = nullptr;
    TileArea m_area{};
    int m_lanes = 0;
    float m_maximum = 0;
};

}  // namespace kvx::ipp
