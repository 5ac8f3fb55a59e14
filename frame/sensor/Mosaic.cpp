#include "KvxFrame/Mosaic.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>
#include <vector>

#include "frame/base/Fail.h"
#include "frame/samples/RowTeam.h"
#include "frame/samples/SampleRow.h"
#include "frame/sensor/NormalDeviates.h"
#include "frame/sensor/SensorFaults.h"
#include "frame/view/Checks.h"

namespace kvx::frame {
namespace {

struct Colour {
    double red, green, blue;
};

/** Light of a picture's samples, from 0 for black to 1 for white. */
class LightTable {
public:
    LightTable(uint32_t white, bool isLinear) : m_light(size_t{white} + 1) {
        for (size_t sample = 0; sample < m_light.size(); ++sample) {
            const double share = static_cast<double>(sample) / white;
            m_light[sample] = isLinear ? Decoded(share) : share;
        }
    }
    double operator()(uint16_t sample) const {
        return m_light[std::min<size_t>(sample, m_light.size() - 1)];
    }

private:
    /** The sRGB curve of IEC 61966-2-1. */
    static double Decoded(double share) {
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    }

    std::vector<double> m_light;
};

/** The pixels of a picture of any order and depth. */
class Pixels {
public:
    Pixels(const SourceView& picture, const Sensor& sensor)
        : m_picture(picture),
          m_light(sensor.pictureWhite != 0 ? sensor.pictureWhite : White(picture.format), sensor.isLinear),
          m_step(picture.stride != 0 ? picture.stride
                                     : static_cast<ptrdiff_t>(RowBytes(picture.format, picture.width))),
          m_samples(SamplesPerPixel(picture.format)) {
        if (m_samples > 1) {
            m_green = 1;
            (IsBlueFirst(picture.format) ? m_red : m_blue) = 2;
        }
    }

    Colour At(uint32_t row, uint32_t column) const {
        const uint8_t* const start = static_cast<const uint8_t*>(m_picture.data) + static_cast<ptrdiff_t>(row) * m_step;
        const size_t first = size_t{column} * m_samples;
        return {LightAt(start, first + m_red), LightAt(start, first + m_green), LightAt(start, first + m_blue)};
    }

private:
    double LightAt(const uint8_t* row, size_t index) const {
        if (m_picture.format.bits == 8) return m_light(row[index]);
        uint16_t sample = 0;  // at any address
        std::memcpy(&sample, row + 2 * index, sizeof sample);
        return m_light(sample);
    }

    const SourceView& m_picture;
    LightTable m_light;
    ptrdiff_t m_step;
    uint32_t m_samples, m_red = 0, m_green = 0, m_blue = 0;
};

/** Weights of the colours behind the filter at each site of a mosaic. */
class Filters {
public:
    Filters(const Format& format, const std::array<double, 3>& panWeights) {
        const double sum = panWeights[0] + panWeights[1] + panWeights[2];
        const Colour clear = {panWeights[0] / sum, panWeights[1] / sum, panWeights[2] / sum};
        for (uint32_t row = 0; row < kSide; ++row) {
            for (uint32_t column = 0; column < kSide; ++column) {
                const char letter = FilterAt(format, row, column);
                m_isClear[row * kSide + column] = letter != 'R' && letter != 'G' && letter != 'B';
                m_shares[row * kSide + column] = Behind(letter, clear);
            }
        }
    }
    double Seen(const Colour& colour, uint32_t row, uint32_t column) const {
        const Colour& shares = m_shares[row % kSide * kSide + column % kSide];
        return colour.blue * shares.blue + colour.green * shares.green + colour.red * shares.red;
    }
    bool IsClear(uint32_t row, uint32_t column) const {
        return m_isClear[row % kSide * kSide + column % kSide];
    }

private:
    static constexpr uint32_t kSide = 4;  // of the largest tile, and a multiple of the others'

    static Colour Behind(char letter, const Colour& clear) {
        switch (letter) {
            case 'R':
                return {1, 0, 0};
            case 'G':
                return {0, 1, 0};
            case 'B':
                return {0, 0, 1};
            default:
                return clear;
        }
    }

    std::array<Colour, size_t{kSide} * kSide> m_shares;
    std::array<bool, size_t{kSide} * kSide> m_isClear{};
};

/** Rounds half up; weights such as 1/3 may leave a half slightly below it. */
uint16_t RoundedSample(double sample) {
    constexpr double kTolerance = 1e-7;
    return static_cast<uint16_t>(std::floor(sample + 0.5 + kTolerance));
}

void CheckPicture(const SourceView& picture) {
    const Format& format = picture.format;
    const bool isGrey = format.family == Family::Mono && format.layout == Layout::Plain;
    if (!IsValid(format) || !(isGrey || format.family == Family::Colour))
        Fail(KvxResult_InvalidArgument,
             "{} is no picture: pictures are RGB8 to RGB16, BGR8, RGBa8, ..., Mono8 to Mono16", Name(format));
    CheckBuffer(picture, "picture");
}

void CheckSensor(const Sensor& sensor, const Format& picture, const DestinationView& frame) {
    double sum = 0;
    for (const double weight : sensor.panWeights) {
        if (!(weight >= 0) || !std::isfinite(sum += weight))
            Fail(KvxResult_OutOfRange, "a pan weight of {}: give finite weights that are not negative", weight);
    }
    if (!(sum > 0)) Fail(KvxResult_OutOfRange, "all pan weights are 0: give one that is not");
    if (sensor.pictureWhite > White(picture))
        Fail(KvxResult_OutOfRange, "the picture's white of {} is more than the {} of {}", sensor.pictureWhite,
             White(picture), Name(picture));
    if (sensor.noise)
        for (const NoiseLine& line : {sensor.noise->pan, sensor.noise->colour})
            if (!std::isfinite(line.slope) || !std::isfinite(line.intercept))
                Fail(KvxResult_OutOfRange, "noise of {} x signal + {}: give finite numbers", line.slope,
                     line.intercept);
    CheckFaults(sensor, frame);
}

}  // namespace

void MakeMosaic(const SourceView& picture, const DestinationView& frame, const Sensor& sensor, int threads) {
    CheckPicture(picture);
    CheckFrame(frame);
    CheckSameSize(picture, frame);
    CheckSensor(sensor, picture.format, frame);
    CheckApart(picture, frame);
    const Pixels pixels(picture, sensor);
    const Filters filters(frame.format, sensor.panWeights);
    const SensorFaults faults(sensor, frame);
    const double white = White(frame.format), range = white - sensor.blackLevel;
    constexpr double kModelWhite = 4095;  // of the values that noise is given in
    RowTeam(frame, threads).Run([&](uint32_t row, uint16_t* samples) {
        NormalDeviates noise(sensor.noiseSeed, row);
        SensorFaults::Row faultsOfRow(faults, row);
        for (uint32_t column = 0; column < frame.width; ++column) {
            double value = range * filters.Seen(pixels.At(row, column), row, column) * faultsOfRow.Light(column);
            if (sensor.noise) {
                const NoiseLine& line = filters.IsClear(row, column) ? sensor.noise->pan : sensor.noise->colour;
                value += line.DeviationAt(value / white * kModelWhite) / kModelWhite * white * noise.Next();
            }
            value += sensor.blackLevel + faultsOfRow.Offset(column);
            samples[column] = RoundedSample(std::clamp(value, 0.0, white));
        }
        WriteRow(frame, row, samples);
    });
}

}  // namespace kvx::frame
