#include <algorithm>
#include <array>
#include <cmath>

#include "KvxFrame/SensorNoise.h"
#include "frame/base/Fail.h"

namespace kvx::frame {
namespace {

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
    if (!(analogGain >= 0)) Fail(KvxResult_OutOfRange, "an analog gain of {}: a gain is not negative", analogGain);
    const auto points = PointsOf(params);
    size_t next = 0;
    while (next < points.size() && points[next].gain < analogGain) ++next;
    if (next == 0) return points.front().noise;
    if (next == points.size()) return points.back().noise;
    const CalibrationPoint &low = points[next - 1], &high = points[next];
    const double share = (analogGain - low.gain) / (high.gain - low.gain);
    return {Between(low.noise.pan, high.noise.pan, share), Between(low.noise.colour, high.noise.colour, share)};
}

SensorNoise NoiseAt(double analogGain) {
    tagTrueSenseParam params;
    TrueSense_DefaultValues(&params);
    return NoiseAt(params, analogGain);
}

}  // namespace kvx::frame
