/** Pan at every site, sample by sample, with its own constants: slow, plain, and without the library's arithmetic. */
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <utility>
#include <vector>

#include "pipeline/GammaCodes.h"

namespace kvx::test {

/** Gamma codes of a frame of even sides; those of pan sites, whose row + column is even, are given. */
class PlainPan {
public:
    int width, height;
    std::vector<int> codes;

    PlainPan(int w, int h, std::vector<int> panCodes, bool isFiltered)
        : width(w), height(h), codes(std::move(panCodes)) {
        if (isFiltered) Filter();
        ForSites(1, [this](int row, int column) { return Interpolated(row, column); });
    }

private:
    int At(int row, int column) const {
        const auto folded = [](int i, int length) {
            while (i < 0 || i >= length) i = i < 0 ? -i : 2 * length - 2 - i;
            return i;
        };
        return codes[size_t(folded(row, height)) * width + folded(column, width)];
    }
    int Nearest(int row, int column) const {
        return At(row - 1, column - 1) + At(row - 1, column + 1) + At(row + 1, column - 1) + At(row + 1, column + 1);
    }
    template <class CodeAt>
    void ForSites(int parity, const CodeAt& codeAt) {
        std::vector<int> next = codes;
        for (int row = 0; row < height; ++row)
            for (int column = (row + parity) % 2; column < width; column += 2)
                next[size_t(row) * width + column] = codeAt(row, column);
        codes = next;
    }
    static float LinearAt(int code) {
        return float(Gamma10toLinear12[code]) + 1;
    }
    static float SlopeAt(float linear) {
        return linear <= 256 ? 1 : 277.2086918F / (linear + 1.5F);
    }

    struct Block {
        int roughness;
        bool isSignal;
    };
    /** One residual in every second row and column of 16x16 pixels; returns the level, too. */
    std::pair<int, Block> BlockAt(int row, int column) const {
        int residuals[8][8], level = 0, sum = 0;
        for (int i = 0; i < 8; ++i)
            for (int j = 0; j < 8; ++j) {
                const int r = row + 2 * i, c = column + 2 * j;
                residuals[i][j] = 4 * At(r, c) - Nearest(r, c);
                level += At(r, c);
                sum += std::abs(residuals[i][j]);
            }
        float correlations = 0;
        for (int lag = 1; lag < 4 && sum; ++lag)
            for (const bool isDown : {false, true}) {
                int differences = 0;
                for (int i = 0; i < 8; ++i)
                    for (int j = lag; j < 8; ++j)
                        differences += isDown ? std::abs(residuals[j][i] - residuals[j - lag][i])
                                              : std::abs(residuals[i][j] - residuals[i][j - lag]);
                const float ratio = float(differences) / float(64 - 8 * lag) / (float(sum) / 64);
                const float excess = 1 - .5F * ratio * ratio - (lag == 1 ? .1F : 0);
                correlations += excess * excess;
            }
        return {level / 4096, {std::min(sum / 64, 511), correlations > .5F}};
    }

    std::vector<float> Thresholds() const {
        std::vector<Block> blocks[16];
        for (int row = 0; row + 16 <= height; row += 16)
            for (int column = 0; column + 16 <= width; column += 16) {
                const auto [level, block] = BlockAt(row, column);
                blocks[level].push_back(block);
            }
        std::vector<float> thresholds(1024, .5F), least(1024, INFINITY);
        for (int level = 0; level < 16; ++level) {
            auto& own = blocks[level];
            if (own.size() < 12) continue;
            std::ranges::sort(own, {}, &Block::roughness);
            const int step = own[own.size() / 8].roughness;
            const auto isSmooth = [=](const Block& block) { return block.roughness <= step; };
            const auto isSignal = [=](const Block& block) { return block.roughness <= step && block.isSignal; };
            const bool mostlySignal = 2 * std::ranges::count_if(own, isSignal) > std::ranges::count_if(own, isSmooth);
            const float middle = LinearAt(64 * level + 32), deviation = float(step) * .3F / SlopeAt(middle);
            for (int code = 0; code < 1024; ++code) {
                const float linear = LinearAt(code);
                const float possible = linear > middle ? deviation * std::sqrt(linear / middle) : deviation;
                if (possible >= least[code]) continue;
                least[code] = possible;
                thresholds[code] = mostlySignal ? .5F : std::max(4.1F * possible * SlopeAt(linear), .5F);
            }
        }
        return thresholds;
    }

    void Filter() {
        const std::vector<float> thresholds = Thresholds();
        constexpr int around[][2] = {{-1, -1}, {-1, 1}, {1, -1},  {1, 1},  {-2, 0}, {0, -2},
                                     {0, 2},   {2, 0},  {-2, -2}, {-2, 2}, {2, -2}, {2, 2}};
        ForSites(0, [&](int row, int column) {
            const int centre = At(row, column);
            const float threshold = thresholds[(4 * centre + Nearest(row, column) + 4) / 8];
            float weights = threshold * threshold, sum = 0;
            for (const auto& [down, right] : around) {
                const auto difference = float(At(row + down, column + right) - centre);
                const float weight = std::max(threshold * threshold - difference * difference, 0.F);
                sum += weight * difference;
                weights += weight;
            }
            return int(float(centre) + sum / weights + .5F);
        });
    }

    int Interpolated(int row, int column) const {
        int across = 6, down = 6;  // below that, gradients say nothing about a direction
        for (int i = -2; i <= 2; ++i)
            for (int j = -2; j <= 2; ++j) {
                if ((i + j) % 2) continue;
                across += std::abs(At(row + i, column + j - 1) - At(row + i, column + j + 1));
                down += std::abs(At(row + i - 1, column + j) - At(row + i + 1, column + j));
            }
        const auto estimate = [](int near0, int near1, int far0, int far1) {
            return float(9 * (near0 + near1) - far0 - far1);
        };
        const float alongRow =
            estimate(At(row, column - 1), At(row, column + 1), At(row, column - 3), At(row, column + 3));
        const float alongColumn =
            estimate(At(row - 1, column), At(row + 1, column), At(row - 3, column), At(row + 3, column));
        const float weightRow = float(down) * float(down), weightColumn = float(across) * float(across);
        const float mean = (alongRow * weightRow + alongColumn * weightColumn) / (weightRow + weightColumn);
        return int(std::clamp(mean / 16 + .5F, 0.F, 1023.F));
    }
};

}  // namespace kvx::test
