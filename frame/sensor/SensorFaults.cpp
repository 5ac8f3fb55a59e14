#include "frame/sensor/SensorFaults.h"

#include <algorithm>
#include <cmath>
#include <tuple>

#include "frame/base/Fail.h"

namespace kvx::frame {
namespace {

/** Streams of random numbers that no row has. */
constexpr uint64_t kHotStream = uint64_t{1} << 32, kDeadStream = kHotStream + 1;

}  // namespace

void CheckFaults(const Sensor& sensor, const DestinationView& frame) {
    const uint32_t white = White(frame.format);
    if (!(sensor.blackLevel >= 0 && sensor.blackLevel < white))
        Fail(KvxResult_OutOfRange, "a black level of {}: give 0 or more, less than {}", sensor.blackLevel, white);
    for (const double light : sensor.cornerLight)
        if (!(light > 0 && light <= 1))
            Fail(KvxResult_OutOfRange, "light of {} in the corners: give more than 0, at most 1", light);
    if (!(sensor.fixedPattern >= 0 && sensor.fixedPattern <= white))
        Fail(KvxResult_OutOfRange, "a fixed pattern of {}: give 0 to {}", sensor.fixedPattern, white);
    const uint64_t pixels = uint64_t{frame.width} * frame.height;
    if (sensor.hotPixels > pixels || sensor.deadPixels > pixels)
        Fail(KvxResult_OutOfRange, "{} hot and {} dead pixels: the frame has {}", sensor.hotPixels, sensor.deadPixels,
             pixels);
}

SensorFaults::SensorFaults(const Sensor& sensor, const DestinationView& frame)
    : m_sensor(sensor), m_width(frame.width), m_height(frame.height) {
    for (uint32_t site = 0; site < m_lossInCorner.size(); ++site) {
        const auto& [red, green, blue] = sensor.cornerLight;
        const char filter = FilterAt(frame.format, site / 4, site % 4);
        m_lossInCorner[site] = 1 - (filter == 'R'   ? red
                                    : filter == 'G' ? green
                                    : filter == 'B' ? blue
                                                    : (red + green + blue) / 3);
    }
    const auto plant = [&](uint32_t count, uint64_t stream, const auto& defectOf) {
        NormalDeviates random(sensor.patternSeed, stream);
        const auto place = [&random](uint32_t size) {
            return std::min(static_cast<uint32_t>(random.NextUniform() * size), size - 1);
        };
        for (uint32_t i = 0; i < count; ++i) {
            const uint32_t row = place(m_height), column = place(m_width);
            const auto [light, offset] = defectOf(random.NextUniform());
            m_defects.push_back({row, column, light, offset});
        }
    };
    const double white = White(frame.format);
    plant(sensor.hotPixels, kHotStream, [white](double u) { return std::pair(1.0, white * std::pow(0.01, u)); });
    plant(sensor.deadPixels, kDeadStream, [](double u) { return std::pair(u / 2, 0.0); });
    std::sort(m_defects.begin(), m_defects.end(), [](const Defect& a, const Defect& b) {
        return std::tie(a.row, a.column, a.light, a.offset) < std::tie(b.row, b.column, b.light, b.offset);
    });
}

SensorFaults::Row::Row(const SensorFaults& faults, uint32_t row)
    : m_faults(faults),
      m_row(row),
      m_next(std::to_address(std::lower_bound(faults.m_defects.begin(), faults.m_defects.end(), row,
                                              [](const Defect& defect, uint32_t r) { return defect.row < r; }))),
      m_pattern(~faults.m_sensor.patternSeed, row) {}

double SensorFaults::Row::Light(uint32_t column) {
    const auto fromCentre = [](uint32_t place, uint32_t size) { return size > 1 ? 2.0 * place / (size - 1) - 1 : 0; };
    const double x = fromCentre(column, m_faults.m_width), y = fromCentre(m_row, m_faults.m_height);
    const double width = m_faults.m_width, height = m_faults.m_height;
    // Of the half diagonal: a pixel is as wide as it is high.
    const double square = (x * x * width * width + y * y * height * height) / (width * width + height * height);
    double light = 1 - m_faults.m_lossInCorner[m_row % 4 * 4 + column % 4] * square;
    const Defect* const end = m_faults.m_defects.data() + m_faults.m_defects.size();
    while (m_next != end && m_next->row == m_row && m_next->column < column) ++m_next;
    for (const Defect* d = m_next; d != end && d->row == m_row && d->column == column; ++d) light *= d->light;
    return light;
}

double SensorFaults::Row::Offset(uint32_t column) {
    double offset = m_faults.m_sensor.fixedPattern > 0 ? m_faults.m_sensor.fixedPattern * m_pattern.Next() : 0;
    const Defect* const end = m_faults.m_defects.data() + m_faults.m_defects.size();
    for (const Defect* d = m_next; d != end && d->row == m_row && d->column == column; ++d) offset += d->offset;
    return offset;
}

}  // namespace kvx::frame
