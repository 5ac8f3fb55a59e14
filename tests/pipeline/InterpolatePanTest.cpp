// Pan interpolation: against its plain form, and what it keeps of noise, edges and texture.
#include <gtest/gtest.h>

#include <functional>

#include "support/PipelineFrame.h"
#include "support/PlainPan.h"

namespace kvx::test {
namespace {

using SampleAt = std::function<double(int row, int column)>;

/** What Alg_InterpolatePan() makes of linear samples by place. */
struct Pan {
    int width, height;
    std::vector<int> given;  // codes at all sites, before
    std::vector<uint16_t> codes, at[2];

    Pan(int w, int h, const SampleAt& sampleAt) : width(w), height(h), codes(size_t(w) * h) {
        const int w2 = w / 2, h2 = h / 2;
        std::vector<uint16_t> quarters[2];
        for (auto* planes : {quarters, at})
            for (int i = 0; i < 2; ++i) planes[i].resize(size_t(w2) * h2);
        for (int row = 0; row < h; ++row)
            for (int column = 0; column < w; ++column) {
                const auto sample = static_cast<uint16_t>(std::clamp(sampleAt(row, column) + .5, 0., 4095.));
                given.push_back(Linear12toGamma10[sample]);
                if ((row + column) % 2 == 0 && row / 2 < h2 && column / 2 < w2)
                    quarters[row % 2][row / 2 * w2 + column / 2] = sample;
            }
        Scratch scratch(2 * codes.size());
        Succeed(Alg_InterpolatePan(quarters[0].data(), quarters[1].data(), w, h, codes.data(), at[0].data(),
                                   at[1].data(), nullptr));
    }
};

SampleAt Noisy(unsigned seed, double sigma, const SampleAt& sampleAt) {
    return [=, random = std::mt19937(seed), normal = std::normal_distribution<double>()](int row, int column) mutable {
        return sampleAt(row, column) + sigma * normal(random);
    };
}

TEST(InterpolatePan, EqualsItsPlainForm) {
    constexpr struct {
        int width, height;
    } sizes[] = {{64, 48}, {64, 64}, {144, 80}, {48, 67}, {2, 2}, {4, 2}, {23, 21}};
    std::mt19937 random(5);
    const auto draw = [&](int end) { return int(random() % unsigned(end)); };
    for (int round = 0; round < 150; ++round) {
        const auto [width, height] = sizes[draw(4) ? draw(4) : draw(7)];
        const int edge = draw(2) ? draw(2 * width) : 0, dark = draw(4096), bright = draw(4096);
        const int sigma = draw(8) ? draw(1 << (3 + draw(6))) : 0, period = 2 + draw(5);
        const double contrast = draw(2) ? (sigma + 2) * .1 * draw(20) : 0;
        const Pan pan(width, height, Noisy(unsigned(random()), sigma, [&](int row, int column) {
                          const double texture =
                              (column + (round % 3) * row) % period < period / 2 ? contrast : -contrast;
                          return (row + column < edge ? dark : bright) + texture;
                      }));
        std::vector<int> given;  // what is odd is left out
        for (int row = 0; row < height / 2 * 2; ++row)
            given.insert(given.end(), &pan.given[row * width], &pan.given[row * width] + width / 2 * 2);
        const PlainPan plain(width / 2 * 2, height / 2 * 2, given, true);
        for (int row = 0; row < plain.height; ++row)
            for (int column = 0; column < plain.width; ++column) {
                const int code = plain.codes[row * plain.width + column];
                ASSERT_EQ(pan.codes[row * width + column], code) << round << ": " << row << " " << column;
                if ((row + column) % 2) {
                    ASSERT_EQ(pan.at[row % 2][row / 2 * (width / 2) + column / 2], Gamma10toLinear12[code]);
                }
            }
    }
}

/** How much of the difference from 1000 stays at all sites, and the deviation from it, in linear values. */
std::pair<double, double> KeptOf(const SampleAt& shapeAt, double sigma) {
    constexpr int size = 192;
    const Pan pan(size, size, Noisy(11, sigma, [&](int r, int c) { return 1000 + shapeAt(r, c); }));
    double product = 0, squares = 0, errors = 0;
    for (int row = 0; row < size; ++row)
        for (int column = 0; column < size; ++column) {
            const double shape = shapeAt(row, column);
            const double value = Gamma10toLinear12[pan.codes[row * size + column]] - 1000;
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
