#include "frame/finish/Balance.h"

#include <algorithm>
#include <cmath>

#include "frame/base/Fail.h"
#include "frame/samples/SampleRow.h"

namespace kvx::frame {
namespace {

constexpr int kFinestScale = 17;
constexpr double kLargestFactor = 65535;

double GainOf(char filter, const Gains& gains) {
    switch (filter) {
        case 'R':
            return gains.red;
        case 'G':
            return gains.green;
        case 'B':
            return gains.blue;
        default:
            return gains.pan;
    }
}

/** The largest scale with which `factor` fits 16 bits. */
int ScaleFor(double factor) {
    int scale = kFinestScale;
    while (scale > 0 && std::ceil(std::ldexp(factor, scale)) > kLargestFactor) --scale;
    return scale;
}

double WhiteOf(const Finish& finish, const Format& format, size_t filter) {
    const double given = finish.whiteLevel.ofFilters[filter];
    return given == 0 ? White(format) : given;
}

/** The range from black to white, as a mean over the filters. */
double MeanRange(const Finish& finish, const Format& format) {
    double sum = 0;
    for (size_t i = 0; i < 4; ++i) sum += WhiteOf(finish, format, i) - finish.blackLevel.ofFilters[i];
    return sum / 4;
}

}  // namespace

size_t FilterIndex(const SourceView& source, uint32_t row, uint32_t column) {
    return FilterIndex(source.format, source.verMirrored ? source.height - 1 - row : row,
                       source.horMirrored ? source.width - 1 - column : column);
}

WideLevels::WideLevels(const Finish& finish, const Format& format) {
    const double scale = 1u << (16 - format.bits);
    for (size_t i = 0; i < 4; ++i) {
        black[i] = static_cast<uint16_t>(std::lround(scale * finish.blackLevel.ofFilters[i]));
        white[i] = static_cast<uint16_t>(std::lround(scale * WhiteOf(finish, format, i)));
    }
}

void CheckLevels(const SourceView& source, const Finish& finish) {
    for (size_t i = 0; i < 4; ++i) {
        const double black = finish.blackLevel.ofFilters[i], white = WhiteOf(finish, source.format, i);
        if (!(white > 0 && white <= White(source.format)))
            Fail(KvxResult_InvalidArgument, "a white level of {}: {} ends at {}", white, Name(source.format),
                 White(source.format));
        if (!(black >= 0 && black < white))
            Fail(KvxResult_InvalidArgument, "a black level of {} leaves nothing of {}: white is {}", black,
                 Name(source.format), white);
    }
    const WideLevels levels(finish, source.format);
    for (size_t i = 0; i < 4; ++i)
        if (levels.black[i] >= levels.white[i])
            Fail(KvxResult_InvalidArgument, "black level {} and white level {} are the same in 16 bits",
                 finish.blackLevel.ofFilters[i], WhiteOf(finish, source.format, i));
}

SensorNoise BalancedNoise(const SensorNoise& noise, const Format& source, const Finish& finish, const Gains& gains) {
    // A grey signal of the size s is s / gain before its gain; the variance grows by gain^2.
    const double stretch = White(source) / MeanRange(finish, source);
    const auto balanced = [stretch](const NoiseLine& line, double gain, double squaredGain) {
        return NoiseLine{line.slope * stretch * gain, line.intercept * stretch * stretch * squaredGain};
    };
    const double red = gains.red, green = gains.green, blue = gains.blue;
    return {balanced(noise.pan, gains.pan, gains.pan * gains.pan),
            balanced(noise.colour, (red + 2 * green + blue) / 4, (red * red + 2 * green * green + blue * blue) / 4)};
}

NoiseLine NoiseOfWhite(const SensorNoise& noise, Family family) {
    constexpr double kWhite = 4095;  // of the values that a noise line is given in
    const NoiseLine& line = family == Family::TrueSense ? noise.pan : noise.colour;
    return {line.slope / kWhite, line.intercept / (kWhite * kWhite)};
}

Balance::Balance(const SourceView& source, const Finish& finish, const Gains& gains, uint8_t bits) {
    const WideLevels levels(finish, source.format);
    const uint32_t limit = (1u << bits) - 1;
    std::array<double, 4> stretch{};
    for (size_t i = 0; i < 4; ++i) stretch[i] = static_cast<double>(limit) / (levels.white[i] - levels.black[i]);
    const double largest =
        *std::max_element(stretch.begin(), stretch.end()) * std::max({gains.red, gains.green, gains.blue, gains.pan});
    const int scale = ScaleFor(largest);
    for (uint32_t row = 0; row < m_rows.size(); ++row) {
        RowBalance& balance = m_rows[row];
        balance.largest = static_cast<uint16_t>(White(source.format));
        balance.leftShift = static_cast<uint8_t>(16 - source.format.bits);
        balance.scale = static_cast<uint8_t>(scale);
        balance.limit = static_cast<uint16_t>(limit);
        for (uint32_t column = 0; column < balance.factors.size(); ++column) {
            const size_t filter = FilterIndex(source, row, column);
            const double factor = stretch[filter] * GainOf(StoredFilterAt(source, row, column), gains);
            balance.white[column] = levels.white[filter];
            balance.black[column] = levels.black[filter];
            balance.factors[column] =
                static_cast<uint16_t>(std::min(std::ceil(std::ldexp(factor, scale)), kLargestFactor));
        }
    }
}

}  // namespace kvx::frame
