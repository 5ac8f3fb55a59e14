#include "KvxBayer/MosaicStrip.h"

#include <algorithm>

namespace kvx {

void MosaicStrip::Convert(int64_t firstRow, int64_t endRow, int64_t firstColumn, int64_t endColumn) {
    const int64_t width = m_job.size.width, height = m_job.size.height;
    const auto centreOf = [height](int64_t row) { return std::clamp<int64_t>(row, 1, height - 2); };
    m_left = std::max<int64_t>(firstColumn - 1, 0);
    m_width = std::min(endColumn + 1, width) - m_left;
    m_nextRow = centreOf(firstRow) - 1;
    int64_t computed = -1;
    for (int64_t row = firstRow; row < endRow; ++row) {
        const int64_t centre = centreOf(row);  // border rows repeat their neighbours
        if (centre != computed) ComputeRow(centre);
        computed = centre;
        const int64_t before = firstColumn - m_left;
        const std::array<const uint16_t*, 3> planes = {m_planes[0].data() + before, m_planes[1].data() + before,
                                                       m_planes[2].data() + before};
        m_job.exchange->Write(static_cast<uint32_t>(row), static_cast<uint32_t>(firstColumn),
                              static_cast<uint32_t>(endColumn - firstColumn), planes);
    }
}

void MosaicStrip::ReadUntil(int64_t row) {
    for (; m_nextRow <= row; ++m_nextRow)
        m_job.exchange->Read(static_cast<uint32_t>(m_nextRow), static_cast<uint32_t>(m_left),
                             static_cast<uint32_t>(m_width), m_samples[m_nextRow % 3].data());
}

void MosaicStrip::ComputeRow(int64_t centre) {
    ReadUntil(centre + 1);
    const auto samples = [this](int64_t row) { return reinterpret_cast<const uint8_t*>(m_samples[row % 3].data()); };
    const bool odd = centre % 2 != 0;
    const bool rowColourIsBlue = IsBlueOnTop(m_job.pattern) != odd;
    uint16_t* const red = m_planes[0].data();
    uint16_t* const blue = m_planes[2].data();
    uint16_t* const planes[3] = {rowColourIsBlue ? blue : red, m_planes[1].data(), rowColourIsBlue ? red : blue};
    ConvertMosaicPlanes({.above = samples(centre - 1),
                         .centre = samples(centre),
                         .below = samples(centre + 1),
                         .sampleSize = sizeof(uint16_t),
                         .width = static_cast<size_t>(m_width),
                         .greenFirst = (IsGreenFirst(m_job.pattern) != odd) != (m_left % 2 != 0),
                         .rowColourFirst = true,
                         .rule = m_rule,
                         .output = {}},
                        planes);
}

}  // namespace kvx
