// The matrix in fixed point gives the bits of the matrix in double, near whole numbers above all.
#include "demosaicers/frame/ToneIndices.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <vector>

#include "KvxTrueSense/TrueSenseParams.h"
#include "support/InstructionSets.h"

namespace kvx::test {
namespace {

uint16_t IndexInDouble(const double* row, double red, double green, double blue) {
    volatile double fromRed = row[0] * red, fromGreen = row[1] * green, fromBlue = row[2] * blue;
    volatile double redGreen = fromRed + fromGreen;
    const double sum = redGreen + fromBlue;
    return static_cast<uint16_t>(!(sum > 0) ? 0 : sum >= 4095 ? 4095 : static_cast<int>(sum));
}

struct Values {
    std::vector<int16_t> planes[3];
    void Add(int red, int green, int blue) {
        planes[0].push_back(static_cast<int16_t>(red));
        planes[1].push_back(static_cast<int16_t>(green));
        planes[2].push_back(static_cast<int16_t>(blue));
    }
};

/**
 * Greys, whose sums lie at whole numbers when the rows of a matrix add up to one, each once and in runs with one end
 * that differs; extremes; noise of two widths.
 */
Values MakeValues() {
    Values values;
    for (int grey = -100; grey < 8300; ++grey) values.Add(grey, grey, grey);
    for (const int grey : {-5, 0, 1, 7, 2000, 4095, 4096})
        for (int i = 0; i < 97; ++i) values.Add(grey, grey, grey + (i == 96));
    for (const int red : {-32768, -1, 0, 1, 4095, 32767})
        for (const int green : {-32768, 0, 4096, 32767})
            for (const int blue : {-32768, -4095, 0, 32767}) values.Add(red, green, blue);
    std::mt19937 random(1);
    for (const int width : {13, 16})
        for (int i = 0; i < 30000; ++i) {
            const auto draw = [&] { return static_cast<int16_t>(static_cast<int32_t>(random()) >> (32 - width)); };
            values.Add(draw(), draw(), draw());
        }
    return values;
}

std::vector<ColourMatrix> Matrices() {
    constexpr double none = std::numeric_limits<double>::quiet_NaN(), all = std::numeric_limits<double>::infinity();
    const tagTrueSenseParam p = DefaultTrueSenseParams();
    std::vector<ColourMatrix> matrices = {
        {p.RR, p.RG, p.RB, p.GR, p.GG, p.GB, p.BR, p.BG, p.BB},
        {1.657, -.5325, -.1245, -.106, 1.443, -.337, .131, -.445, 1.314},
        {1, 0, 0, 0, 1, 0, 0, 1e-12, 1},  // whole numbers everywhere
        {.25, .5, .25, 1. / 3, 1. / 3, 1. / 3, .1, .2, .7},
        {1.999, 1.999, -.001, 3.9, -3.9, .1, -7.9, 7.5, .5},  // fewer bits after the point
        {7.999, -7.99, .0001, 8.001, -7.99, .1, 1, 1, 1},     // too steep for fixed point
        {1e300, -1e300, 1e300, 1e5, -1e-5, 0, 1e308, 1e308, 1e308},
        {none, 0, 0, all, 0, 0, all, -all, 1},
    };
    std::mt19937 random(2);
    std::uniform_real_distribution<double> entry(-2, 2);
    for (int i = 0; i < 6; ++i) {
        ColourMatrix& matrix = matrices.emplace_back();
        for (double& e : matrix) e = entry(random);
    }
    return matrices;
}

TEST(ToneIndices, OfAMatrixEqualTheComputationInDouble) {
    const Values values = MakeValues();
    const size_t count = values.planes[0].size(), room = 64;
    Values padded = values;
    for (auto& plane : padded.planes) plane.resize(count + room);
    const int16_t* const planes[] = {padded.planes[0].data(), padded.planes[1].data(), padded.planes[2].data()};
    for (const ColourMatrix& matrix : Matrices()) {
        std::vector<uint16_t> expected[3];
        for (size_t i = 0; i < count; ++i)
            for (int channel = 0; channel < 3; ++channel)
                expected[channel].push_back(
                    IndexInDouble(&matrix[3 * channel], planes[0][i], planes[1][i], planes[2][i]));
        ForEachInstructionSet([&] {
            std::vector<uint16_t> found[3];
            for (auto& indices : found) indices.resize(count + room);
            uint16_t* const indices[] = {found[0].data(), found[1].data(), found[2].data()};
            ToneIndices(planes, matrix, FixedMatrixOf(matrix), count, indices);
            for (int channel = 0; channel < 3; ++channel)
                for (size_t i = 0; i < count; ++i)
                    ASSERT_EQ(found[channel][i], expected[channel][i])
                        << "channel " << channel << " of " << planes[0][i] << ", " << planes[1][i] << ", "
                        << planes[2][i] << " by " << matrix[3 * channel] << ", " << matrix[3 * channel + 1] << ", "
                        << matrix[3 * channel + 2];
        });
    }
}

TEST(FixedMatrix, TakesDisplayMatricesAndLeavesTheRestToDouble) {
    const auto matrices = Matrices();
    for (size_t i = 0; i < 5; ++i) EXPECT_TRUE(FixedMatrixOf(matrices[i]).isUsable) << i;
    for (size_t i = 5; i < 8; ++i) EXPECT_FALSE(FixedMatrixOf(matrices[i]).isUsable) << i;
}

}  // namespace
}  // namespace kvx::test
