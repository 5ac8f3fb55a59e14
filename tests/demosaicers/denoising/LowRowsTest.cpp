// Rows at the sides of a plane: what lies outside does not count.
#include "demosaicers/denoising/LowRows.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "support/InstructionSets.h"
#include "support/StagePlanes.h"

namespace kvx::test {
namespace {

TEST(LowRows, ImpulsesAreFilteredAsByTheStage) {
    constexpr int height = 5, reach = 128;
    std::mt19937 random(1);
    for (int width = 1; width < 70; ++width) {
        std::vector<int32_t> plane;
        std::vector<int16_t> rows(height * (width + 2 * reach));  // zeros outside would be outliers
        const auto rowAt = [&](int row) { return &rows[row * (width + 2 * reach) + reach]; };
        for (int row = 0; row < height; ++row)
            for (int k = 0; k < width; ++k) {
                rowAt(row)[k] = static_cast<int16_t>(-500 + static_cast<int>(random() % 200));
                plane.push_back(rowAt(row)[k]);
            }
        const Scratch scratch(plane.size() * sizeof(int32_t));
        ASSERT_EQ(Alg_ImpulseFilter(plane.data(), 5, width, height, 2, nullptr), 0);
        ForEachInstructionSet([&] {
            for (int row = 0; row < height; ++row) {
                std::vector<int16_t> filtered(width + reach);
                FilterImpulses(
                    {row < 2 ? nullptr : rowAt(row - 2), rowAt(row), row + 2 < height ? rowAt(row + 2) : nullptr},
                    width, filtered.data());
                for (int k = 0; k < width; ++k)
                    ASSERT_EQ(filtered[k], plane[row * width + k]) << width << " wide, at " << row << ", " << k;
            }
        });
    }
}

}  // namespace
}  // namespace kvx::test
