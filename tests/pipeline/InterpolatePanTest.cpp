// Pan interpolation: laws that any good choice keeps.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <numeric>

#include "pipeline/PanNoise.h"
#include "support/PipelineFrame.h"

namespace kvx::test {
namespace {

/** Pan everywhere, from linear samples by place. */
struct PanPicture {
    int width, height;
    std::vector<uint16_t> samples, pan, panAt[2];

    PanPicture(int w, int h, const std::function<double(int, int)>& sampleAt) : width(w), height(h) {
        const int w2 = w / 2, h2 = h / 2;
        std::vector<uint16_t> quarters[2];
        for (auto* planes : {quarters, panAt})
            for (int i = 0; i < 2; ++i) planes[i].resize(size_t(w2) * h2);
        for (int row = 0; row < h; ++row)
            for (int column = 0; column < w; ++column) {
                samples.push_back(static_cast<uint16_t>(std::clamp(sampleAt(row, column), 0., 4095.)));
                if (IsPan(row, column) && row / 2 < h2 && column / 2 < w2)
                    quarters[row % 2][row / 2 * w2 + column / 2] = samples.back();
            }
        pan.resize(samples.size());
        Scratch scratch(2 * samples.size());
        Succeed(Alg_InterpolatePan(quarters[0].data(), quarters[1].data(), w, h, pan.data(), panAt[0].data(),
                                   panAt[1].data(), nullptr));
    }
    static bool IsPan(int row, int column) {
        return (row + column) % 2 == 0;
    }
    int At(int row, int column) const {
        return pan[size_t(row) * width + column];
    }
    int CodeAt(int row, int column) const {
        return Linear12toGamma10[samples[size_t(row) * width + column]];
    }
};

TEST(InterpolatePan, KeepsFlatFieldsAndWhatIsNotNoise) {
    for (const auto& [width, height] : {std::pair{2, 2}, {4, 2}, {2, 8}, {22, 20}, {64, 80}})
        for (const int level : {0, 100, 1000, 4095}) {
            const PanPicture flat(width, height, [=](int, int) { return level; });
            const int code = Linear12toGamma10[level];
            EXPECT_TRUE(std::ranges::all_of(flat.pan, [=](int value) { return value == code; })) << level;
            for (const auto& plane : flat.panAt)
                EXPECT_TRUE(std::ranges::all_of(plane, [=](int v) { return v == Gamma10toLinear12[code]; })) << level;
        }
    // Too small a frame to measure noise on: known sites stay; the others are handed on as linear values. What is odd
    // is left out.
    for (const auto& [width, height] : {std::pair{24, 20}, {25, 21}}) {
        const std::vector<uint16_t> noise = Drawn<uint16_t>(size_t(width) * height, 0, 4095, 6);
        const int columns = width;
        const PanPicture wild(width, height, [&](int row, int column) { return noise[row * columns + column]; });
        for (int row = 0; row < height / 2 * 2; ++row)
            for (int column = 0; column < width / 2 * 2; ++column) {
                ASSERT_LE(wild.At(row, column), 1023);
                if (PanPicture::IsPan(row, column)) {
                    ASSERT_EQ(wild.At(row, column), wild.CodeAt(row, column));
                } else {
                    ASSERT_EQ(wild.panAt[row % 2][row / 2 * (width / 2) + column / 2],
                              Gamma10toLinear12[wild.At(row, column)]);
                }
            }
    }
}

TEST(InterpolatePan, FollowsEdgesOfEveryDirection) {
    constexpr struct {
        const char* what;
        int down, across, offset;
    } edges[] = {
        {"horizontal", 1, 0, 33}, {"vertical", 0, 1, 30}, {"diagonal", 1, 1, 64}, {"other diagonal", 1, -1, 1}};
    for (const auto& edge : edges)
        for (const int sign : {1, -1}) {
            const auto place = [=](int row, int column) {
                return sign * (edge.down * row + edge.across * column - edge.offset);
            };
            const PanPicture picture(64, 64, [&](int r, int c) { return place(r, c) < 0 ? 300 : 1500; });
            const int low = Linear12toGamma10[300], high = Linear12toGamma10[1500];
            // Four taps across a diagonal step swing over by a sixteenth of it, where it meets the border by more.
            const int swing = edge.down && edge.across ? (high - low + 7) / 8 : 0;
            int wrong = 0;
            for (int row = 0; row < 64; ++row)
                for (int column = 0; column < 64; ++column) {
                    const int code = picture.At(row, column), there = picture.CodeAt(row, column);
                    EXPECT_TRUE(code >= low - swing && code <= high + swing) << edge.what << " " << code;
                    EXPECT_TRUE(code == there || std::abs(place(row, column)) <= 3)
                        << edge.what << row << " " << column;
                    wrong += std::abs(code - there) > (high - low) / 2;
                }
            EXPECT_LE(wrong, edge.across && edge.down ? 64 : 0) << edge.what;
        }
}

double DeviationOf(const std::vector<double>& values) {
    const double mean = std::accumulate(values.begin(), values.end(), 0.) / double(values.size());
    double squares = 0;
    for (const double value : values) squares += (value - mean) * (value - mean);
    return std::sqrt(squares / double(values.size()));
}

TEST(InterpolatePan, CalmsNoiseAndKeepsAnEdgeOfTenDeviations) {
    constexpr int size = 192;
    for (const double level : {150., 1000., 3000.}) {
        const double sigma = 2 + std::sqrt(level) / 2, step = 10 * sigma;
        std::mt19937 random(11);
        std::normal_distribution<double> noise(0, sigma);
        const PanPicture picture(
            size, size, [&](int, int column) { return level + (column < size / 2 ? 0 : step) + noise(random) + .5; });
        std::vector<double> before, after;
        double beside[2] = {};
        for (int row = 0; row < size; ++row)
            for (int column = 0; column < size; ++column) {
                if (column == size / 2 - 1 || column == size / 2)
                    beside[column - size / 2 + 1] += double(picture.At(row, column)) / size;
                if (column >= size / 2 - 8) continue;
                after.push_back(picture.At(row, column));
                if (PanPicture::IsPan(row, column)) before.push_back(picture.CodeAt(row, column));
            }
        EXPECT_GT(DeviationOf(before), 2.5 * DeviationOf(after)) << level;
        const double slope = GammaSlope(float(level + step / 2));
        EXPECT_GT(beside[1] - beside[0], .8 * step * slope) << level;
    }
}

TEST(PanNoise, TellsThresholdsFromSmoothBlocksAndLimitsThemByEachOther) {
    constexpr int darkCode = 96, brightCode = 608;  // middles of levels
    const auto linearAt = [](int code) { return Gamma10toLinear12[code] + 1.; };
    const auto slopeAt = [](double linear) { return double(GammaSlope(float(linear))); };
    for (const auto& [dark, bright] : {std::pair{10, -1}, {10, 90}, {10, 4}}) {
        PanNoise noise, part;
        for (int block = 0; block < 16; ++block) {  // one block of eight, and the next, are smoother
            noise.Count(darkCode * 64, (block < 2 ? 1 : dark) * 64);
            if (bright >= 0) part.Count(brightCode * 64, bright * 64 + 63);
            if (block < 11) noise.Count(300 * 64, 0);  // too few
        }
        noise.Add(part);
        const PanThresholds thresholds = noise.Thresholds();
        for (const int code : {20, 200, 500, 900}) {
            const auto possible = [&](int known, int roughness) {
                const double deviation = roughness * .3 / slopeAt(linearAt(known));
                return deviation * std::sqrt(std::max(linearAt(code) / linearAt(known), 1.));
            };
            const double deviation = bright < 0 ? possible(darkCode, dark)
                                                : std::min(possible(darkCode, dark), possible(brightCode, bright));
            EXPECT_NEAR(thresholds[size_t(code)], 4.1 * deviation * slopeAt(linearAt(code)), 1e-3) << code;
        }
    }
    for (const float threshold : PanNoise().Thresholds()) EXPECT_EQ(threshold, .5F);
}

}  // namespace
}  // namespace kvx::test
