/** The planes of one frame that the noise-reducing demosaicers keep between their steps. */
#pragma once

#include "demosaicers/denoising/LowRows.h"
#include "demosaicers/denoising/PaddedPlane.h"
#include "demosaicers/denoising/PanCodeRows.h"
#include "pipeline/PanInterpolation.h"
#include "pipeline/SigmaFilter.h"

namespace kvx {

/** Rows of pan sites have one element for each cell, as have the half-resolution planes. */
struct PipelinePlanes {
    int width = 0, height = 0;  ///< of the working area; multiples of 4

    PaddedPlane<int16_t> pan, filteredPan;  ///< codes at the pan sites of each row
    PaddedPlane<int16_t> fullPan;           ///< codes at every column of each row
    PaddedPlane<int16_t> colour;            ///< codes of the colour samples
    PaddedPlane<int16_t> difference, filteredDifference;
    PaddedPlane<int16_t> lowColour;
    PaddedPlane<int32_t> lowPan[2], lowColorDiff[2];  ///< before and after a pass

    int Cells() const {
        return width / 2;
    }
    int CellRows() const {
        return height / 2;
    }
    /** Makes room for a working area. @return false without memory */
    bool Reserve(int newWidth, int newHeight) noexcept;
    void Release() noexcept;

    /** A row and its neighbours, mirrored at the border. */
    PanWindow Window(const PaddedPlane<int16_t>& plane, int row) const {
        PanWindow rows;
        for (int i = 0; i < static_cast<int>(rows.size()); ++i) rows[i] = plane.Row(MirroredRow(row + i - 3));
        return rows;
    }
    int MirroredRow(int row) const {
        return MirroredIndex(row, height);
    }
};

}  // namespace kvx
