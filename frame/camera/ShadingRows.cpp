#include "frame/camera/ShadingRows.h"

#include <cmath>

#include "frame/finish/Balance.h"

namespace kvx::frame {

ShadingRows::Place ShadingRows::PlaceOf(uint32_t pixel, uint32_t pixels, uint32_t nodes) {
    const double position = pixels > 1 ? static_cast<double>(pixel) * (nodes - 1) / (pixels - 1) : 0;
    const uint32_t node = std::min(static_cast<uint32_t>(position), nodes - 2);
    return {node, position - node};
}

void ShadingRows::Prepare(const CameraProfile& profile, const SourceView& frame, uint32_t left, uint32_t top) {
    const Shading& shading = profile.shading;
    m_gains.clear();
    if (shading.columns == 0) return;
    m_width = frame.width;
    m_height = profile.height;
    m_nodes = shading.rows;
    m_top = top;
    m_gains.reserve(size_t{shading.rows} * kTurns * m_width);
    for (uint32_t nodeRow = 0; nodeRow < shading.rows; ++nodeRow)
        for (uint32_t turn = 0; turn < kTurns; ++turn)
            for (uint32_t column = 0; column < m_width; ++column) {
                const Place place = PlaceOf(left + column, profile.width, shading.columns);
                const float* const nodes = shading.gains[FilterIndex(frame, turn, column)].data() +
                                           size_t{nodeRow} * shading.columns + place.node;
                const double gain = std::lerp(double{nodes[0]}, double{nodes[1]}, place.share);
                m_gains.push_back(static_cast<int16_t>(std::lround(std::ldexp(gain, kShadingPlaces))));
            }
}

void ShadingRows::Apply(uint32_t row, RowCorrection& correction) const {
    correction.upperGains = correction.lowerGains = nullptr;
    if (m_gains.empty()) return;
    const Place place = PlaceOf(m_top + row, m_height, m_nodes);
    correction.upperGains = m_gains.data() + (size_t{place.node} * kTurns + row % kTurns) * m_width;
    correction.lowerGains = correction.upperGains + size_t{kTurns} * m_width;
    correction.lowerWeight = static_cast<int16_t>(std::min(std::lround(place.share * 32768), 32767L));
}

}  // namespace kvx::frame
