/** Tables that follow a monotone curve through given points. */
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace kvx {

struct CurvePoint {
    int x, y;
};

/**
 * The piecewise cubic of Fritsch and Butland through `points` (x ascending, the first and last are 0 and N - 1), at
 * 0 to N - 1, rounded to nearest. It rises wherever the points rise and does not overshoot.
 */
template <size_t N, size_t Count>
constexpr std::array<uint16_t, N> MonotoneCubic(const CurvePoint (&points)[Count]) {
    double width[Count - 1] = {}, secant[Count - 1] = {}, slope[Count] = {};
    for (size_t i = 0; i + 1 < Count; ++i) {
        width[i] = points[i + 1].x - points[i].x;
        secant[i] = (points[i + 1].y - points[i].y) / width[i];
    }
    for (size_t i = 1; i + 1 < Count; ++i) {  // a weighted harmonic mean of the secants on both sides
        const double before = 2 * width[i] + width[i - 1], after = width[i] + 2 * width[i - 1];
        slope[i] = (before + after) / (before / secant[i - 1] + after / secant[i]);
    }
    slope[0] = secant[0];
    slope[Count - 1] = secant[Count - 2] / 4;  // the curve arrives flat

    std::array<uint16_t, N> table{};
    size_t i = 0;
    for (size_t x = 0; x < N; ++x) {
        if (static_cast<int>(x) > points[i + 1].x) ++i;
        const double t = (static_cast<double>(x) - points[i].x) / width[i], rest = 1 - t;
        const double y = points[i].y * (1 + 2 * t) * rest * rest + points[i + 1].y * t * t * (3 - 2 * t) +
                         (slope[i] * rest - slope[i + 1] * t) * width[i] * t * rest;
        table[x] = static_cast<uint16_t>(y + 0.5);
    }
    return table;
}

}  // namespace kvx
