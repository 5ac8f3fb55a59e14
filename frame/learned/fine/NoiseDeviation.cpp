#include "frame/learned/fine/NoiseDeviation.h"

#include <algorithm>
#include <cmath>

namespace kvx::frame {

NoiseDeviation::NoiseDeviation(const NoiseLine& noise) {
    constexpr double kWords = 65536;
    const double step = kWords / static_cast<double>(m_table.size());
    for (size_t i = 0; i < m_table.size(); ++i) {
        const double signal = (static_cast<double>(i) + 0.5) * step;
        const double variance = noise.slope * kWords * signal + noise.intercept * (kWords * kWords);
        m_table[i] = static_cast<int16_t>(std::min(std::floor(std::sqrt(std::max(variance, 0.0)) + 0.5), 32767.0));
    }
}

void NoiseDeviation::OfCells(const int16_t* cells, size_t count, size_t planes, std::span<const uint8_t> measured,
                             int16_t* out) const {
    for (size_t cell = 0; cell < count; ++cell, cells += planes) {
        uint32_t sum = 0;
        for (const uint8_t plane : measured) sum += static_cast<uint32_t>(cells[plane] + 32768);
        out[cell] = m_table[sum / measured.size() * m_table.size() >> 16];
    }
}

}  // namespace kvx::frame
