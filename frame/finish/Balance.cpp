#include "frame/finish/Balance.h"

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

}  // namespace

void CheckLevels(const SourceView& source, const Finish& finish) {
    const uint32_t white = WhiteLevel(finish, source.format);
    if (white > White(source.format))
        Fail(KvxResult_InvalidArgument, "a white level of {}: {} ends at {}", white, Name(source.format),
             White(source.format));
    if (finish.blackLevel >= white)
        Fail(KvxResult_InvalidArgument, "a black level of {} leaves nothing of {}: white is {}", finish.blackLevel,
             Name(source.format), white);
}

NoiseLine BalancedNoise(const SensorNoise& noise, const Format& source, const Finish* finish, const Gains& gains) {
    constexpr double kNoiseWhite = 4095;  // of the values that a noise line is given in
    const bool hasPan = source.family == Family::TrueSense;
    NoiseLine line = hasPan ? noise.pan : noise.colour;
    line.slope /= kNoiseWhite;
    line.intercept /= kNoiseWhite * kNoiseWhite;
    if (!finish) return line;
    // A grey signal of the size s is s / gain before its gain; the variance grows by gain^2.
    const double stretch = static_cast<double>(White(source)) / (WhiteLevel(*finish, source) - finish->blackLevel);
    const double red = gains.red, green = gains.green, blue = gains.blue, pan = gains.pan;
    const double gain = hasPan ? pan : (red + 2 * green + blue) / 4;
    const double squared = hasPan ? pan * pan : (red * red + 2 * green * green + blue * blue) / 4;
    return {line.slope * stretch * gain, line.intercept * stretch * stretch * squared};
}

Balance::Balance(const SourceView& source, const Finish& finish, const Gains& gains, uint8_t bits) {
    const uint32_t white = WhiteLevel(finish, source.format);
    const int leftShift = 16 - source.format.bits;
    const uint32_t black = finish.blackLevel << leftShift;
    const uint32_t limit = (1u << bits) - 1;
    const double stretch = static_cast<double>(limit) / ((white << leftShift) - black);
    const double largest = stretch * std::max({gains.red, gains.green, gains.blue, gains.pan});
    const int scale = ScaleFor(largest);
    for (uint32_t row = 0; row < m_rows.size(); ++row) {
        RowBalance& balance = m_rows[row];
        balance = {static_cast<uint16_t>(white), static_cast<uint8_t>(leftShift), static_cast<uint16_t>(black),
                   static_cast<uint8_t>(scale),  static_cast<uint16_t>(limit),    {}};
        for (uint32_t column = 0; column < balance.factors.size(); ++column) {
            const double factor = stretch * GainOf(StoredFilterAt(source, row, column), gains);
            balance.factors[column] =
                static_cast<uint16_t>(std::min(std::ceil(std::ldexp(factor, scale)), kLargestFactor));
        }
    }
}

}  // namespace kvx::frame
