// What pan interpolation keeps of noise, edges and texture. Its values are checked with the whole pipeline.
#include <gtest/gtest.h>

#include <functional>

#include "pipeline/GammaCodes.h"
#include "support/PipelineFrame.h"

namespace kvx::test {
namespace {

using SampleAt = std::function<double(int row, int column)>;

/** The gamma codes that Alg_InterpolatePan() makes of linear samples by place; of even sides. */
std::vector<uint16_t> PanOf(int width, int height, const SampleAt& sampleAt) {
    const size_t cells = size_t(width) * height / 4;
    std::vector<uint16_t> pan(4 * cells), quarters[2], at0(cells), at1(cells);
    for (int row = 0; row < height; ++row)
        for (int column = 0; column < width; ++column) {
            const auto sample = static_cast<uint16_t>(std::clamp(sampleAt(row, column) + .5, 0., 4095.));
            if ((row + column) % 2 == 0) quarters[row % 2].push_back(sample);
        }
    Scratch scratch(2 * pan.size());
    Succeed(Alg_InterpolatePan(quarters[0].data(), quarters[1].data(), width, height, pan.data(), at0.data(),
                               at1.data(), nullptr));
    return pan;
}

SampleAt Noisy(unsigned seed, double sigma, const SampleAt& sampleAt) {
    return [=, random = std::mt19937(seed), normal = std::normal_distribution<double>()](int row, int column) mutable {
        return sampleAt(row, column) + sigma * normal(random);
    };
}

/** How much of the difference from 1000 stays at all sites, and the deviation from it, in linear values. */
std::pair<double, double> KeptOf(const SampleAt& shapeAt, double sigma) {
    constexpr int size = 192;
    const auto codes = PanOf(size, size, Noisy(11, sigma, [&](int r, int c) { return 1000 + shapeAt(r, c); }));
    double product = 0, squares = 0, errors = 0;
    for (int row = 0; row < size; ++row)
        for (int column = 0; column < size; ++column) {
            const double shape = shapeAt(row, column);
            const double value = Gamma10toLinear12[codes[row * size + column]] - 1000;
            product += shape * value;
            squares += shape * shape;
            errors += (value - shape) * (value - shape);
        }
    return {product / squares, std::sqrt(errors) / size};
}

TEST(InterpolatePan, CalmsNoiseAndKeepsEdgesAndTexture) {
    const struct {
        const char* what;
        double sigma, contrast, error;  // at least, at most
        SampleAt shapeAt;
    } cases[] = {
        {"noise and an edge", 20, .97, 9, [](int, int c) { return c < 96 ? -100 : 100; }},
        {"stripes down", 0, .8, 15, [](int, int c) { return c % 4 < 2 ? 64 : -64; }},
        {"stripes across", 0, .8, 15, [](int r, int) { return r % 4 < 2 ? 64 : -64; }},
        {"noisy stripes", 20, .8, 30, [](int r, int) { return r % 4 < 2 ? 64 : -64; }},
        {"a wave", 0, .8, 15, [](int, int c) { return 64 * std::sin(c * M_PI / 2 + .6); }},
        {"an oblique wave", 0, .8, 15, [](int r, int c) { return 64 * std::sin(c * 1.2 + r * .9); }},
        {"a wave of period 6", 10, .8, 15, [](int r, int) { return 64 * std::sin(r * M_PI / 3 + .5); }},
    };
    for (const auto& c : cases) {
        const auto [contrast, error] = KeptOf(c.shapeAt, c.sigma);
        EXPECT_TRUE(contrast > c.contrast && error < c.error) << c.what << ": " << contrast << " " << error;
    }
}

}  // namespace
}  // namespace kvx::test
