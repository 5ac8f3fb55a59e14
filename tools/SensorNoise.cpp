#include "tools/SensorNoise.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace kvx::tool {
namespace {

constexpr uint64_t kGoldenStep = 0x9E3779B97F4A7C15;

/** The output function of SplitMix64 (Steele, Lea and Flood, 2014). */
constexpr uint64_t Mixed(uint64_t bits) {
    bits = (bits ^ (bits >> 30)) * 0xBF58476D1CE4E5B9;
    bits = (bits ^ (bits >> 27)) * 0x94D049BB133111EB;
    return bits ^ (bits >> 31);
}

NoiseLine Between(const NoiseLine& a, const NoiseLine& b, double share) {
    return {std::lerp(a.slope, b.slope, share), std::lerp(a.intercept, b.intercept, share)};
}

struct CalibrationPoint {
    double gain;
    SensorNoise noise;
};

std::array<CalibrationPoint, 5> PointsOf(const tagTrueSenseParam& p) {
    return {
        {{p.ISOAnalogGain_0, {{p.ISOPanSlope_0, p.ISOPanIntercept_0}, {p.ISOColorSlope_0, p.ISOColorIntercept_0}}},
         {p.ISOAnalogGain_1, {{p.ISOPanSlope_1, p.ISOPanIntercept_1}, {p.ISOColorSlope_1, p.ISOColorIntercept_1}}},
         {p.ISOAnalogGain_2, {{p.ISOPanSlope_2, p.ISOPanIntercept_2}, {p.ISOColorSlope_2, p.ISOColorIntercept_2}}},
         {p.ISOAnalogGain_3, {{p.ISOPanSlope_3, p.ISOPanIntercept_3}, {p.ISOColorSlope_3, p.ISOColorIntercept_3}}},
         {p.ISOAnalogGain_4, {{p.ISOPanSlope_4, p.ISOPanIntercept_4}, {p.ISOColorSlope_4, p.ISOColorIntercept_4}}}}};
}

}  // namespace

double NoiseLine::DeviationAt(double signal) const {
    return std::sqrt(std::max(0.0, slope * signal + intercept));
}

SensorNoise NoiseAt(const tagTrueSenseParam& params, double analogGain) {
    const auto points = PointsOf(params);
    size_t next = 0;
    while (next < points.size() && points[next].gain < analogGain) ++next;
    if (next == 0) return points.front().noise;
    if (next == points.size()) return points.back().noise;
    const CalibrationPoint &low = points[next - 1], &high = points[next];
    const double share = (analogGain - low.gain) / (high.gain - low.gain);
    return {Between(low.noise.pan, high.noise.pan, share), Between(low.noise.colour, high.noise.colour, share)};
}

NormalDeviates::NormalDeviates(uint64_t seed, uint64_t row) : m_state(Mixed(Mixed(seed + kGoldenStep) + row)) {}

/** Above 0, up to 1. */
double NormalDeviates::NextUniform() {
    m_state += kGoldenStep;
    return static_cast<double>((Mixed(m_state) >> 11) + 1) * 0x1p-53;
}

double NormalDeviates::Next() {
    if (m_hasSecond) {
        m_hasSecond = false;
        return m_second;
    }
    const double radius = std::sqrt(-2 * std::log(NextUniform()));
    const double angle = 2 * std::numbers::pi * NextUniform();
    m_second = radius * std::sin(angle);
    m_hasSecond = true;
    return radius * std::cos(angle);
}

}  // namespace kvx::tool
