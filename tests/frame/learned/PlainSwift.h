/** "swift" pixel by pixel, as training/README.md defines it. */
#pragma once

#include <algorithm>
#include <array>
#include <cstdlib>
#include <span>
#include <vector>

#include "KvxFrame/Format.h"

namespace kvx::frame {

class PlainSwift {
public:
    /** @param samples row by row, of the sensor as `format` sees it; @param file of weights */
    PlainSwift(const Format& format, int width, int height, std::vector<uint16_t> samples,
               std::span<const uint8_t> file)
        : m_format(format), m_width(width), m_height(height), m_samples(std::move(samples)), m_file(file) {}

    /** Red, green and blue as unsigned words. */
    std::array<int, 3> At(int row, int column) const {
        const int side = m_file[5], shift = m_file[7], taps = m_file[8];
        const int tileRow = (row + m_format.phase / side) % side, tileColumn = (column + m_format.phase % side) % side;
        const auto* offsets = reinterpret_cast<const int8_t*>(m_file.data() + 9);
        const uint8_t* weights = m_file.data() + 9 + 2 * taps + (tileRow * side + tileColumn) * 3 * 2 * 2 * taps;
        const int64_t mix = Mix(row, column);
        std::array<int, 3> pixel;
        for (int& word : pixel) {
            int64_t sums[2] = {};  // along rows, along columns
            for (int64_t& sum : sums)
                for (int tap = 0; tap < taps; ++tap, weights += 2) {
                    const auto weight = static_cast<int16_t>(weights[0] | weights[1] << 8);
                    sum += int64_t{weight} * (Word(row + offsets[2 * tap], column + offsets[2 * tap + 1]) - 32768);
                }
            const int64_t sum = mix * sums[0] + (4 - mix) * sums[1] + (int64_t{1} << (shift + 1));
            word = static_cast<int>(std::clamp<int64_t>(sum >> (shift + 2), -32768, 32767)) + 32768;
        }
        return pixel;
    }

private:
    /** The nearest index inside, a tile away or a multiple of that; if there is none, half a tile, and so on. */
    static int Inside(int index, int size, int side) {
        for (int step = side;; step /= 2) {
            int moved = index;
            while (moved < 0) moved += step;
            while (moved >= size && moved >= step) moved -= step;
            if (moved < size) return moved;
        }
    }

    int Word(int row, int column) const {
        const int side = m_file[5];
        const size_t index = size_t(Inside(row, m_height, side)) * m_width + Inside(column, m_width, side);
        return m_samples[index] << (16 - m_format.bits);
    }

    int Gradient(int row, int column, int down, int right) const {
        const auto at = [&](int steps) { return Word(row + steps * down, column + steps * right) >> 4; };
        const int first = std::abs(at(1) - at(-1)), second = std::abs(2 * at(0) - at(2) - at(-2));
        if (m_format.family == Family::Bayer) return first + second;
        return FilterAt(m_format, row + 4, column + 4) == 'W' ? second >> 1 : first;
    }

    int Mix(int row, int column) const {
        int h = 0, v = 0;
        for (int i = -1; i <= 1; ++i)
            for (int j = -1; j <= 1; ++j) {
                h += Gradient(row + i, column + j, 0, 1);
                v += Gradient(row + i, column + j, 1, 0);
            }
        h = std::min(h, 65535);
        v = std::min(v, 65535);
        return (v >= (h >> 2) + (h >> 3)) + (v >= h - (h >> 2)) + (h < v - (v >> 2)) + (h < (v >> 2) + (v >> 3));
    }

    Format m_format;
    int m_width, m_height;
    std::vector<uint16_t> m_samples;
    std::span<const uint8_t> m_file;
};

}  // namespace kvx::frame
