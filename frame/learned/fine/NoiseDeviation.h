/** The deviation of the noise in each cell, from its mean signal. */
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "KvxFrame/SensorNoise.h"

namespace kvx::frame {

/** Deviations in 16-bit words, for 1024 levels of the signal. */
class NoiseDeviation {
public:
    /** @param noise with signal and noise as shares of white */
    explicit NoiseDeviation(const NoiseLine& noise);

    /**
     * @param cells  signed words, `planes` for each cell
     * @param measured the planes whose mean is the signal
     */
    void OfCells(const int16_t* cells, size_t count, size_t planes, std::span<const uint8_t> measured,
                 int16_t* out) const;

private:
    std::array<int16_t, 1024> m_table;
};

}  // namespace kvx::frame
