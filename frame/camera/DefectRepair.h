/** Replaces defective samples by neighbours of their own filter colour. */
#pragma once

#include <array>
#include <vector>

#include "KvxFrame/View.h"
#include "frame/camera/DefectMask.h"

namespace kvx::frame {

class DefectRepair {
public:
    /** Chooses the neighbours for the mosaic of a frame. */
    void Prepare(const SourceView& frame);

    /**
     * Replaces the defects of a row by the mean of the two opposite neighbours that differ least, together with the
     * samples between; where each pair has a defect, by the median of the neighbours. Without a neighbour a sample
     * stays what it is. Defects are never read: rows can be repaired in any order, also at the same time.
     *
     * @param mosaic words without padding
     */
    void Repair(const DefectMask& mask, uint32_t row, uint16_t* mosaic) const;

private:
    /** A neighbour, whose opposite is the other one of the pair. */
    struct Pair {
        int rows, columns;
        bool hasBetween;  ///< whether the sites next to the defect, in the same direction, are alike
    };
    class Neighbours;

    static constexpr uint32_t kTurns = 4;
    uint32_t m_width = 0, m_height = 0;
    std::array<std::vector<Pair>, size_t{kTurns} * kTurns> m_pairs;  // by site of the tile
};

}  // namespace kvx::frame
