/** The gains of shading, spread over the columns of a frame. */
#pragma once

#include <vector>

#include "KvxFrame/CameraProfile.h"
#include "frame/camera/CorrectionRow.h"

namespace kvx::frame {

class ShadingRows {
public:
    /**
     * @param profile valid
     * @param frame   a region of the profile's frames
     * @param left    column of the frame's first pixel in the profile's frames
     * @param top     likewise its row
     */
    void Prepare(const CameraProfile& profile, const SourceView& frame, uint32_t left, uint32_t top);

    /** Points to the gains of a row of the frame; to nothing if there is no shading. */
    void Apply(uint32_t row, RowCorrection& correction) const;

private:
    /** Index of the node at or before a pixel, and the pixel's place between it and the next one. */
    struct Place {
        uint32_t node;
        double share;
    };
    static Place PlaceOf(uint32_t pixel, uint32_t pixels, uint32_t nodes);

    static constexpr uint32_t kTurns = 4;  // rows after which the filters of every mosaic repeat
    std::vector<int16_t> m_gains;          // a row of gains for each row of nodes and each row of the tile
    uint32_t m_width = 0, m_height = 0, m_nodes = 0, m_top = 0;
};

}  // namespace kvx::frame
