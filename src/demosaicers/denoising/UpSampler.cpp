#include "demosaicers/denoising/UpSampler.h"

#include <algorithm>

#include "demosaicers/frame/TrueSenseTile.h"

namespace kvx {
namespace {

constexpr char s_colours[] = "RGB";
constexpr int kGreen = 1, kPan = 3;

/** The first cell of a colour in a row of cells, or -1 where it has none. */
constexpr int FirstCell(int colour, int cellRow) {
    for (const int cell : {0, 1})
        if (ColourOfCell(cellRow, cell) == s_colours[colour]) return cell;
    return -1;
}

}  // namespace

bool UpSampler::Reserve(int width) noexcept {
    return m_sums.Reserve(width / 2, kColours * kRing + 2, 0, 0) &&
           m_doubled.Reserve(width, (kColours + 1) * kRing, 0, 0.0F);
}

void UpSampler::Begin(const LowPlanes& planes, int row) noexcept {
    m_planes = planes;
    m_nextPan = m_nextColour = std::max(row / 2 - 1, 0);
    m_nextSums = std::max(m_nextColour - 1, 0);
}

/** Rows without the colour are the row of zeros. */
int32_t* UpSampler::Sums(int colour, int cellRow) const {
    return m_sums.Row(FirstCell(colour, cellRow) < 0 ? kColours * kRing : colour * kRing + cellRow % kRing);
}

float* UpSampler::Doubled(int plane, int cellRow) const {
    return m_doubled.Row(plane * kRing + cellRow % kRing);
}

DoubledRows UpSampler::RowsAbout(int plane, int row) const {
    const int here = row / 2, isOdd = row % 2;
    const bool isBorder = row == 0 || row == 2 * m_planes.cellRows - 1;
    if (isBorder) return {nullptr, Doubled(plane, here), nullptr, true};
    return {Doubled(plane, here - 1 + isOdd), Doubled(plane, here), Doubled(plane, here + isOdd), false};
}

void UpSampler::LowPanUpSample(int row, int32_t* values, int16_t* codes) noexcept {
    const int last = std::min(row / 2 + row % 2, m_planes.cellRows - 1);
    for (; m_nextPan <= last; ++m_nextPan)
        CalculateConvolveSimple1D(m_planes.lowPan->Row(m_nextPan), static_cast<size_t>(m_planes.cells),
                                  Doubled(kPan, m_nextPan));
    FinishLowPan(RowsAbout(kPan, row), 2 * static_cast<size_t>(m_planes.cells), values, codes);
}

void UpSampler::LowColorDiffUpSample(int row, const int32_t* lowPan, const std::array<int16_t*, 3>& codes) noexcept {
    const int last = std::min(row / 2 + row % 2, m_planes.cellRows - 1);
    for (; m_nextColour <= last; ++m_nextColour) DoubleColours(m_nextColour);
    for (int colour = 0; colour < kColours; ++colour)
        FinishColour(lowPan, RowsAbout(colour, row), 2 * static_cast<size_t>(m_planes.cells), codes[colour]);
}

void UpSampler::SumColours(int cellRow) {
    for (int colour = 0; colour < kColours; ++colour)
        if (const int first = FirstCell(colour, cellRow); first >= 0)
            SpreadAcross(m_planes.lowColorDiff->Row(cellRow), first, static_cast<size_t>(m_planes.cells),
                         Sums(colour, cellRow));
}

void UpSampler::DoubleColours(int cellRow) {
    const bool isBorder = cellRow == 0 || cellRow == m_planes.cellRows - 1;
    for (; m_nextSums <= std::min(cellRow + 1, m_planes.cellRows - 1); ++m_nextSums) SumColours(m_nextSums);
    int32_t* spread = m_sums.Row(kColours * kRing + 1);
    for (int colour = 0; colour < kColours; ++colour) {
        const int32_t* up = isBorder ? nullptr : Sums(colour, cellRow - 1);
        const int32_t* down = isBorder ? nullptr : Sums(colour, cellRow + 1);
        SpreadDown(up, Sums(colour, cellRow), down, colour == kGreen, static_cast<size_t>(m_planes.cells), spread);
        CalculateConvolveSimple1D(spread, static_cast<size_t>(m_planes.cells), Doubled(colour, cellRow));
    }
}

}  // namespace kvx
