/** A band of rows of a TrueSense frame, streamed through a ring of working rows. */
#pragma once

#include "demosaicers/frame/TrueSenseFrame.h"
#include "demosaicers/interpolation/HalfRows.h"

namespace kvx {

/** The first steps for one row at a time: raw samples, and pan at every site. */
template <class Lane>
class WorkingRows {
public:
    WorkingRows(const TrueSenseFrame& frame, const TrueSenseWorkspace& workspace)
        : m_frame(frame), m_workspace(workspace), m_sites(static_cast<size_t>(frame.area.width / 2)) {}

    /** Takes the samples of a row. @return false when Lane cannot hold what follows from them */
    bool Take(int row) const;
    /** Completes pan and the measured differences; needs the samples of the rows above and below. */
    void CompletePan(int row) const;

    HalfRows<Lane> Row(int row) const {
        return m_workspace.Row<Lane>(row);
    }
    /** A row, or its opposite about `site` where that row lies outside the working area. */
    HalfRows<Lane> RowAbout(int site, int row) const {
        return Row(row >= 0 && row < m_frame.area.height ? row : 2 * site - row);
    }
    bool IsBorder(int row) const {
        return row == 0 || row == m_frame.area.height - 1;
    }
    size_t Sites() const {
        return m_sites;
    }

private:
    const TrueSenseFrame& m_frame;
    const TrueSenseWorkspace& m_workspace;
    size_t m_sites;  // pan sites in a row; as many colour sites
};

class PixelWriter;

/**
 * Interpolates rows [begin, end) of the working area and writes them.
 *
 * @param workspace reserved for the frame's working width; no other thread uses it meanwhile
 */
void ConvertBand(const TrueSenseFrame& frame, const TrueSenseWorkspace& workspace, const PixelWriter& writer, int begin,
                 int end);

}  // namespace kvx
