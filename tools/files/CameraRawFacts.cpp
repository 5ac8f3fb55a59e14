#include "tools/files/CameraRawFacts.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "KvxFrame/CameraProfile.h"

namespace kvx::tool {
namespace {

/** A level of a DNG file with the fraction that LibRaw drops; other files have whole numbers. */
double WithFraction(unsigned level, float exact) {
    return std::trunc(exact) == static_cast<float>(level) ? static_cast<double>(exact) : level;
}

/** Without the digits that single precision does not have. */
double Rounded(double value) {
    return std::round(value * 1e5) / 1e5;
}

frame::Levels BlackLevels(LibRaw& raw, const frame::Format& format) {
    const libraw_colordata_t& color = raw.imgdata.color;
    const auto part = [&color](unsigned index) {
        return WithFraction(color.cblack[index], color.dng_levels.dng_fcblack[index]);
    };
    const double common = WithFraction(color.black, color.dng_levels.dng_fblack);
    const unsigned rows = color.cblack[4], columns = color.cblack[5];
    const bool hasPattern =
        rows > 0 && columns > 0 && rows <= LIBRAW_CBLACK_SIZE / columns && rows * columns <= LIBRAW_CBLACK_SIZE - 6;
    frame::Levels levels;
    for (unsigned site = 0; site < 4; ++site) {
        const unsigned row = site / 2, column = site % 2;
        // The mean over the places of a pattern that have this filter.
        double sum = 0;
        for (unsigned y = row; hasPattern && y < 2 * rows; y += 2) {
            for (unsigned x = column; x < 2 * columns; x += 2) sum += part(6 + y % rows * columns + x % columns);
        }
        const double ofPattern = hasPattern ? sum / (rows * columns) : 0;
        levels.ofFilters[frame::FilterIndex(format, row, column)] =
            common + part(raw.COLOR(static_cast<int>(row), static_cast<int>(column))) + ofPattern;
    }
    return levels;
}

/** As shot, else those of daylight that LibRaw derives from the matrix; the smallest is 1. Equal ones are unknown.
 */
std::optional<frame::Gains> Gains(const libraw_colordata_t& color) {
    for (const float* gains : {color.cam_mul, color.pre_mul}) {
        const double smallest = std::min({gains[0], gains[1], gains[2]});
        const double largest = std::max({gains[0], gains[1], gains[2]});
        if (smallest > 0 && largest > smallest && largest <= 64 * smallest) {
            const double green = Rounded(gains[1] / smallest);
            return frame::Gains{Rounded(gains[0] / smallest), green, Rounded(gains[2] / smallest), green};
        }
    }
    return std::nullopt;
}

/** From balanced sensor colours to linear sRGB; LibRaw has zeros or the identity where it knows none. */
std::optional<std::array<double, 9>> Matrix(const libraw_colordata_t& color) {
    std::array<double, 9> matrix;
    for (int row = 0; row < 3; ++row) {
        std::transform(color.rgb_cam[row], color.rgb_cam[row] + 3, matrix.begin() + ptrdiff_t{3} * row, Rounded);
    }
    constexpr std::array<double, 9> kIdentity = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    const bool isKnown = matrix[0] != 0 && matrix != kIdentity &&
                         std::ranges::all_of(matrix, [](double m) { return std::abs(m) <= 64; });
    return isKnown ? std::optional(matrix) : std::nullopt;
}

/** LibRaw's flags are 1: mirrored horizontally, 2: vertically, 4: then exchange of rows and columns. */
uint64_t ExifOrientation(int flags) {
    constexpr std::array<uint64_t, 8> kOfFlags = {1, 2, 4, 3, 5, 8, 6, 7};
    return kOfFlags[flags & 7];
}

}  // namespace

Sidecar FactsOf(LibRaw& raw, const frame::Format& format) {
    Sidecar facts;
    facts.blackLevel = BlackLevels(raw, format);
    facts.gains = Gains(raw.imgdata.color);
    facts.matrix = Matrix(raw.imgdata.color);
    facts.orientation = ExifOrientation(raw.imgdata.sizes.flip);
    return facts;
}

}  // namespace kvx::tool
