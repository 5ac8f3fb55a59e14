/** A block of the picture, computed row by row through all steps. */
#pragma once

#include <memory>

#include "KvxBayer/ipp/SampleRow.h"
#include "KvxBayer/ipp/Source.h"
#include "KvxBayer/ipp/TileMemory.h"

namespace kvx::ipp {

/** Rows of pixels, of any alignment. */
struct Destination {
    uint8_t* data;
    size_t lineStep;  // bytes

    uint8_t* Row(int row) const {
        return data + static_cast<size_t>(row) * lineStep;
    }
    bool IsAligned(size_t sampleSize) const {
        return lineStep % sampleSize == 0 && reinterpret_cast<uintptr_t>(data) % sampleSize == 0;
    }
};

/** One frame's conversion: what all its tiles share. */
struct Frame {
    Source source;
    Destination destination;
    int width, height;  // of the destination
    SampleScale scale;
    BayerOutput output;
    SlotBytes slot;
    bool blueFirst;  // order of the destination's channels
};

/** The pixels that a tile gives. Both origins are even, so that tiles begin like the frame. */
struct TileArea {
    int firstRow, rows;
    int firstColumn, columns;
};

constexpr int kMaxTileColumns = 2 * (kMaxLanes - 2 * kMarginLanes);

/** One thread's worker; it can compute any number of tiles, one after the other. */
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
    void ClearSlots(int frameRow);

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
