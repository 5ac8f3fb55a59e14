/** The networks of "fine" as training/README.md defines them: a cell at a time, in whole grids of cells. */
#pragma once

#include <algorithm>
#include <cmath>
#include <functional>
#include <span>
#include <vector>

#include "KvxFrame/SensorNoise.h"

namespace kvx::frame {

/** Planes of cells, with a border of cells around those of the frame. */
struct Grid {
    int64_t rows, columns, border, planes;
    std::vector<int64_t> values;

    Grid(int64_t r, int64_t c, int64_t b, int64_t p)
        : rows(r), columns(c), border(b), planes(p), values((r + 2 * b) * (c + 2 * b) * p) {}
    int64_t& At(int64_t row, int64_t column, int64_t plane) {
        return values[((row + border) * (columns + 2 * border) + column + border) * planes + plane];
    }
};

class PlainNetwork {
public:
    explicit PlainNetwork(std::span<const uint8_t> file) : m_file(file) {}

    int64_t Side() const {
        return m_file[5];
    }
    int64_t Halo() const {
        return 2 + m_file[8];
    }

    /** Words of the result; `wordAt(row, column, channel)` gives those of the frame, `isMeasured(plane)` those of
     * sigma. */
    Grid Run(int64_t rows, int64_t columns, const std::function<int64_t(int64_t, int64_t, int64_t)>& wordAt,
             const std::function<bool(int64_t)>& isMeasured, const NoiseLine* noise) {
        const int64_t inputs = m_file[6], channels = m_file[7], middle = m_file[8], baseSize = m_file[9], side = Side();
        const uint8_t* const shifts = m_file.data() + 11;
        m_next = m_file.data() + 11 + middle + 3;
        Grid input(rows, columns, Halo(), inputs), sigma(rows, columns, Halo(), 1);
        ForCells(input, [&](int64_t row, int64_t column) {
            int64_t sum = 0, count = 0;
            for (int64_t plane = 0; plane < inputs; ++plane) {
                const int64_t site = plane / (inputs / (side * side)), channel = plane % (inputs / (side * side));
                const int64_t word = wordAt(row * side + site / side, column * side + site % side, channel);
                input.At(row, column, plane) = word - 32768;
                if (isMeasured(plane)) sum += word, ++count;
            }
            if (noise) sigma.At(row, column, 0) = Deviation(*noise, sum / count / 64);
        });
        Grid below = input;
        for (int64_t layer = 0; layer <= middle; ++layer) {
            Grid next(rows, columns, below.border - 1, channels);
            const auto weights = Take(channels * 9 * below.planes), factors = Take(noise ? channels : 0);
            ForCells(next, [&](int64_t row, int64_t column) {
                for (int64_t c = 0; c < channels; ++c) {
                    const int64_t sum = Sum(below, weights, 3, c, row, column);
                    const int64_t offset = noise ? factors[c] * sigma.At(row, column, 0) : 0;
                    const int64_t value =
                        Saturated(Leaky(Rounded(sum + offset, shifts[layer])) - Leaky(Rounded(offset, shifts[layer])));
                    next.At(row, column, c) = Saturated(value + (layer ? below.At(row, column, c) : 0));
                }
            });
            below = next;
        }
        Grid result(rows, columns, 0, 3 * side * side);
        const auto last = Take(result.planes * 9 * channels), base = Take(result.planes * baseSize * baseSize * inputs);
        const int shift = shifts[middle + 1], excess = shifts[middle + 2] - shift;
        ForCells(result, [&](int64_t row, int64_t column) {
            for (int64_t plane = 0; plane < result.planes; ++plane) {
                const int64_t added = Divided(Sum(input, base, baseSize, plane, row, column), excess);
                result.At(row, column, plane) = 32768 + Rounded(Sum(below, last, 3, plane, row, column) + added, shift);
            }
        });
        return result;
    }

private:
    template <class Body>
    static void ForCells(const Grid& grid, const Body& body) {
        for (int64_t row = -grid.border; row < grid.rows + grid.border; ++row)
            for (int64_t column = -grid.border; column < grid.columns + grid.border; ++column) body(row, column);
    }
    std::vector<int16_t> Take(int64_t count) {
        std::vector<int16_t> words(count);
        for (int16_t& word : words) word = static_cast<int16_t>(m_next[0] | m_next[1] << 8), m_next += 2;
        return words;
    }
    static int64_t Sum(Grid& grid, const std::vector<int16_t>& weights, int64_t size, int64_t filter, int64_t row,
                       int64_t column) {
        int64_t sum = 0, i = filter * size * size * grid.planes;
        for (int64_t y = row - size / 2; y <= row + size / 2; ++y)
            for (int64_t x = column - size / 2; x <= column + size / 2; ++x)
                for (int64_t plane = 0; plane < grid.planes; ++plane) sum += weights[i++] * grid.At(y, x, plane);
        return sum;
    }
    static int64_t Saturated(int64_t value) {
        return std::clamp<int64_t>(value, -32768, 32767);
    }
    static int64_t Divided(int64_t sum, int shift) {
        return (sum + (int64_t{1} << shift >> 1)) >> shift;
    }
    static int64_t Rounded(int64_t sum, int shift) {
        return Saturated(Divided(sum, shift));
    }
    static int64_t Leaky(int64_t value) {
        return std::max(value, Divided(value, 3));
    }
    static int64_t Deviation(const NoiseLine& noise, int64_t level) {
        const double variance =
            noise.slope * 65536 * static_cast<double>(64 * level + 32) + noise.intercept * (65536.0 * 65536.0);
        return static_cast<int64_t>(std::min(32767.0, std::floor(std::sqrt(std::max(0.0, variance)) + 0.5)));
    }

    std::span<const uint8_t> m_file;
    const uint8_t* m_next = nullptr;
};

}  // namespace kvx::frame
