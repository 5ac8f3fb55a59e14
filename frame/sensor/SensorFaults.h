/** What a lens and a sensor do to a frame: shading, fixed pattern, hot and dead pixels. */
#pragma once

#include <array>
#include <vector>

#include "KvxFrame/Mosaic.h"
#include "frame/sensor/NormalDeviates.h"

namespace kvx::frame {

/** @throws Error 0x80070004 for a value out of range */
void CheckFaults(const Sensor& sensor, const DestinationView& frame);

class SensorFaults {
    struct Defect {
        uint32_t row, column;
        double light, offset;
    };

public:
    /** @param sensor checked, must outlive the faults */
    SensorFaults(const Sensor& sensor, const DestinationView& frame);

    /** The faults of a row, for columns in ascending order. */
    class Row {
    public:
        Row(const SensorFaults& faults, uint32_t row);

        /** The share of the light that a site sees. Called first for each column. */
        double Light(uint32_t column);
        /** What a site adds to its sample. */
        double Offset(uint32_t column);

    private:
        const SensorFaults& m_faults;
        uint32_t m_row;
        const Defect* m_next;  // of this column or of a later one
        NormalDeviates m_pattern;
    };

private:
    const Sensor& m_sensor;
    uint32_t m_width, m_height;
    std::array<double, 16> m_lossInCorner{};  // by site of the tile
    std::vector<Defect> m_defects;            // row by row
};

}  // namespace kvx::frame
