#include "frame/learned/swift/SwiftInterpolator.h"

#include <gtest/gtest.h>

#include <random>

#include "frame/learned/Interpolate.h"
#include "frame/learned/PlainSwift.h"
#include "frame/learned/swift/SwiftFilters.h"
#include "frame/learned/weights/EmbeddedWeights.h"
#include "frame/support/TestFrames.h"
#include "support/InstructionSets.h"

namespace kvx::frame {
namespace {

struct Size {
    int width, height;
};
constexpr Size kSizes[] = {{1, 1}, {1, 7}, {7, 1}, {2, 2}, {3, 5}, {17, 9}, {67, 45}, {90, 150}, {586, 5}, {2125, 5}};

std::span<const uint8_t> WeightsOf(Family family) {
    return family == Family::Bayer ? BayerSwiftWeights() : TrueSenseSwiftWeights();
}

using Random = std::mt19937;

int Below(int limit, Random& random) {
    return static_cast<int>(random() % limit);
}

/** Noise, extremes in stripes, or waves whose direction decides between the filters. */
std::vector<uint16_t> SomeSamples(int kind, const Format& format, Size size, Random& random) {
    std::vector<uint16_t> samples;
    const double across = Below(200, random) / 100.0, down = Below(200, random) / 100.0;
    for (int row = 0; row < size.height; ++row)
        for (int column = 0; column < size.width; ++column) {
            const double wave = 0.5 + 0.45 * std::sin(across * column + down * row) + Below(1000, random) * 2e-5;
            const double share = kind == 0 ? Below(4096, random) / 4095.0 : kind == 1 ? (wave > 0.5 ? 1 : 0) : wave;
            samples.push_back(static_cast<uint16_t>(std::lround(share * White(format))));
        }
    return samples;
}

Format FormatOf(Family family, uint8_t bits, uint8_t phase) {
    return {family, bits, Layout::Plain, phase, Order::Rgb};
}

/** All phases and sizes; depths, orders, mirrors and threads in turn. */
void CompareWithTwin(Family family, const std::vector<uint8_t>& depths) {
    Random random(1);
    SwiftInterpolator interpolator(family);
    int number = 0;
    for (uint8_t phase = 0; phase < (family == Family::Bayer ? 4 : 16); ++phase)
        for (const Size size : kSizes)
            for (const uint8_t bits : depths) {
                ++number;
                if (family == Family::TrueSense && number % 3 != 0) continue;  // as many as are worth their time
                const Format format = FormatOf(family, bits, phase);
                const bool horMirrored = family == Family::TrueSense && Below(2, random) == 0,
                           verMirrored = family == Family::TrueSense && Below(2, random) == 0;
                const int pictureDepths[] = {8, bits, 16}, pictureBits = pictureDepths[Below(3, random)];
                const Order order = Below(2, random) == 0 ? Order::Rgb : Order::Bgr;
                const int threads = Below(2, random) == 0 ? 1 : 3;
                SCOPED_TRACE(testing::Message() << size.width << " x " << size.height << ", " << int{bits} << " to "
                                                << pictureBits << " bits, phase " << int{phase});

                const std::vector<uint16_t> samples = SomeSamples(Below(3, random), format, size, random);
                const PlainSwift twin(format, size.width, size.height, samples, WeightsOf(family));
                const auto rowOf = [&](uint32_t row) { return verMirrored ? size.height - 1 - row : row; };
                const auto columnOf = [&](uint32_t column) { return horMirrored ? size.width - 1 - column : column; };
                TestFrame frame = MakeFrame(
                    format, size.width, size.height,
                    [&](uint32_t row, uint32_t column) { return samples[rowOf(row) * size.width + columnOf(column)]; },
                    bits > 8 ? 6 : 3);
                frame.view.horMirrored = horMirrored;
                frame.view.verMirrored = verMirrored;
                std::vector<std::array<int, 3>> expected;
                for (int row = 0; row < size.height; ++row)
                    for (int column = 0; column < size.width; ++column) expected.push_back(twin.At(row, column));

                const int sampleBits = std::max<int>(bits, pictureBits);
                test::ForEachInstructionSet([&] {
                    TestPicture picture({Family::Colour, static_cast<uint8_t>(pictureBits), Layout::Plain, 0, order},
                                        size.width, size.height);
                    ASSERT_EQ(Interpolate(interpolator, frame.view, picture.View(), threads), 0u);
                    ASSERT_TRUE(picture.Image().GuardsIntact());
                    for (uint32_t row = 0; row < frame.view.height; ++row)
                        for (uint32_t column = 0; column < frame.view.width; ++column)
                            for (uint32_t colour = 0; colour < 3; ++colour) {
                                const int word = expected[rowOf(row) * size.width + columnOf(column)][colour];
                                const int sample = std::min((word + (1 << (16 - sampleBits) >> 1)) >> (16 - sampleBits),
                                                            (1 << sampleBits) - 1);
                                ASSERT_EQ(picture.At(row, column, colour), sample >> (sampleBits - pictureBits))
                                    << row << ", " << column << ", " << colour;
                            }
                });
                if (testing::Test::HasFatalFailure()) return;
            }
}

TEST(SwiftTest, BayerIsAsDefined) {
    CompareWithTwin(Family::Bayer, {8, 10, 12, 14, 16});
}

TEST(SwiftTest, TrueSenseIsAsDefined) {
    CompareWithTwin(Family::TrueSense, {8, 10, 12, 14});
}

TEST(SwiftTest, FlatFieldsStayAsTheyAre) {
    const Colour levels = {0.9, 0.3, 0.05};
    for (const Family family : {Family::Bayer, Family::TrueSense}) {
        SwiftInterpolator interpolator(family);
        for (uint8_t phase = 0; phase < (family == Family::Bayer ? 4 : 16); ++phase) {
            const TestFrame frame = MakeFlat(FormatOf(family, 14, phase), 40, 21, levels);
            TestPicture picture({Family::Colour, 14, Layout::Plain, 0, Order::Rgb}, 40, 21);
            ASSERT_EQ(Interpolate(interpolator, frame.view, picture.View(), 1), 0u);
            for (uint32_t pixel = 0; pixel < 40 * 21; ++pixel)
                for (uint32_t colour = 0; colour < 3; ++colour)
                    ASSERT_EQ(picture.At(pixel / 40, pixel % 40, colour), std::lround(levels[colour] * 16383));
        }
    }
}

TEST(SwiftTest, RefusesWeightsThatItCannotRun) {
    const auto all = BayerSwiftWeights();
    const std::vector<uint8_t> good(all.begin(), all.end());
    EXPECT_NO_THROW(ReadSwiftFilters(good));
    const size_t taps = good[8], alongRows = 9 + 2 * taps, alongColumns = alongRows + 2 * taps;
    const auto refuses = [&](size_t place, uint8_t value) {
        std::vector<uint8_t> bad = good;
        bad[place] = value;
        EXPECT_THROW(ReadSwiftFilters(bad), Error) << place;
    };
    for (const size_t place : {0, 4, 5, 6, 7, 8}) refuses(place, 200);
    refuses(9, 4);                  // a tap four rows away
    refuses(alongRows, 1);          // a tap three rows away
    refuses(alongColumns, 1);       // not symmetric
    refuses(alongColumns + 1, 99);  // too large
    EXPECT_THROW(ReadSwiftFilters(all.first(all.size() - 1)), Error);
}

}  // namespace
}  // namespace kvx::frame
