#include "demosaicers/interpolation/TrueSenseBand.h"

#include <algorithm>
#include <type_traits>

#include "demosaicers/frame/PixelWriter.h"
#include "demosaicers/frame/SourceRow.h"
#include "demosaicers/frame/TrueSenseTile.h"
#include "demosaicers/interpolation/ColourDifferences.h"
#include "demosaicers/interpolation/LineSplit.h"
#include "demosaicers/interpolation/PanAtColourSites.h"
#include "demosaicers/interpolation/RowColours.h"

namespace kvx {
namespace {

/** Elements just outside a half-row whose neighbours are the sites of the other half, one column away. */
template <class Lane>
void MirrorAboutPanSites(Lane* half, size_t sites) {
    half[-1] = half[0];
    half[sites] = half[sites - 1];
}

/** Elements just outside a half-row whose neighbours are its own sites, two columns away. */
template <class Lane>
void MirrorAboutColourSites(Lane* half, size_t sites) {
    half[-1] = half[1];
    half[sites] = half[sites - 2];
}

}  // namespace

template <class Lane>
bool WorkingRows<Lane>::Take(int row) const {
    int16_t* line = m_workspace.Line();
    const bool isInRange = ReadSourceRow(m_frame, row, line);
    if (std::is_same_v<Lane, int16_t> && !isInRange) return false;
    const HalfRows<Lane> rows = Row(row);
    SplitLine(line, m_sites, PanIsOdd(row) ? rows.difference : rows.pan, PanIsOdd(row) ? rows.pan : rows.difference);
    MirrorAboutPanSites(rows.pan, m_sites);
    return true;
}

template <class Lane>
void WorkingRows<Lane>::CompletePan(int row) const {
    const HalfRows<Lane> rows = Row(row);
    const Lane* left = PanIsOdd(row) ? rows.pan - 1 : rows.pan;
    const Neighbours<Lane> pan{left, left + 1, RowAbout(row, row - 1).pan, RowAbout(row, row + 1).pan};
    CompletePanAtColourSites(pan, IsBorder(row), PanIsOdd(row) ? 0 : m_sites - 1, m_sites, rows);
    MirrorAboutColourSites(rows.difference, m_sites);
    MirrorAboutPanSites(rows.panAtColour, m_sites);
}

template class WorkingRows<int16_t>;
template class WorkingRows<int32_t>;

namespace {

template <class Lane>
class Band {
public:
    Band(const TrueSenseFrame& frame, const TrueSenseWorkspace& workspace, const PixelWriter& writer, int begin,
         int end)
        : m_frame(frame),
          m_workspace(workspace),
          m_writer(writer),
          m_rows(frame, workspace),
          m_begin(begin),
          m_end(end) {}

    /** A row is taken as many rows ahead of the one that is written as the steps between need. */
    bool Run() const {
        constexpr int ahead = 6;
        for (int row = m_begin - ahead; row < m_end + ahead; ++row) {
            if (Needs(row, 6) && !m_rows.Take(row)) return false;
            if (Needs(row - 1, 5)) m_rows.CompletePan(row - 1);
            if (Needs(row - 3, 3)) CompleteDiagonals(row - 3);
            if (Needs(row - 5, 1)) CompleteDifferences(row - 5);
            if (Needs(row - 6, 0)) Write(row - 6);
        }
        return true;
    }

private:
    /** A row exists and lies within `reach` rows of the band. */
    bool Needs(int row, int reach) const {
        return row >= std::max(m_begin - reach, 0) && row < std::min(m_end + reach, m_frame.area.height);
    }

    void CompleteDiagonals(int row) const {
        const HalfRows<Lane> rows = m_rows.Row(row);
        kvx::CompleteDiagonals(m_rows.RowAbout(row, row - 2), m_rows.RowAbout(row, row + 2), m_rows.Sites(), rows);
        MirrorAboutColourSites(rows.diagonal, m_rows.Sites());
    }

    void CompleteDifferences(int row) const {
        const HalfRows<Lane> rows = m_rows.Row(row);
        kvx::CompleteDifferences(m_rows.RowAbout(row, row - 2), m_rows.RowAbout(row, row + 2), m_rows.Sites(),
                                 HasRed(row), rows);
        for (Lane* differences : {rows.red, rows.green, rows.blue}) MirrorAboutPanSites(differences, m_rows.Sites());
    }

    void Write(int row) const {
        int16_t* const planes[] = {m_workspace.Plane(0), m_workspace.Plane(1), m_workspace.Plane(2)};
        CompleteColours(m_rows.RowAbout(row, row - 1), m_rows.Row(row), m_rows.RowAbout(row, row + 1), PanIsOdd(row),
                        m_rows.IsBorder(row), m_rows.Sites(), planes);
        const int column = m_frame.area.region.column;
        m_writer.WriteRow(row - m_frame.area.region.row, {planes[0] + column, planes[1] + column, planes[2] + column});
    }

    const TrueSenseFrame& m_frame;
    const TrueSenseWorkspace& m_workspace;
    const PixelWriter& m_writer;
    WorkingRows<Lane> m_rows;
    int m_begin, m_end;
};

}  // namespace

void ConvertBand(const TrueSenseFrame& frame, const TrueSenseWorkspace& workspace, const PixelWriter& writer, int begin,
                 int end) {
    if (Band<int16_t>(frame, workspace, writer, begin, end).Run()) return;
    Band<int32_t>(frame, workspace, writer, begin, end).Run();  // the same again, for samples of more than 12 bits
}

}  // namespace kvx
