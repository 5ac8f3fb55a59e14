#include "KvxFrame/KvxFrame.h"
#include "frame/learned/FoldedIndex.h"
#include "frame/learned/Interpolate.h"
#include "frame/learned/PlainNetwork.h"
#include "frame/learned/fine/FineInterpolator.h"
#include "frame/learned/fine/LayerRows.h"
#include "frame/learned/fine/Network.h"
#include "frame/learned/weights/EmbeddedWeights.h"
#include "frame/support/Refusals.h"
#include "frame/support/TestFrames.h"
#include "support/InstructionSets.h"

namespace kvx::frame {
namespace {

struct Case {
    const char* format;
    uint32_t width, height;
    bool hasNoise = false, isHorMirrored = false, isVerMirrored = false;
    const char* destination = "RGB16";
};

// Narrower and lower than a tile; odd; wider than a strip (192 cells) and higher than a band (192 rows of cells).
constexpr Case kCases[] = {
    {"BayerRG12", 1, 1},
    {"BayerGB8", 5, 3, true},
    {"BayerBG16", 23, 17},
    {"BayerGR10", 390, 12, true, false, false, "BGR8"},
    {"BayerRG14", 10, 390},
    {"TrueSense_BGGR_WBBW_0_12", 1, 1},
    {"TrueSense_BGGR_WBBW_0_8", 3, 2, true},
    {"SCF1WBWG14", 23, 17, false, true, false},
    {"CFA_BWGW_WGWR_GWRW_WBWG_12", 35, 21, true, false, true, "BGR8"},
    {"SCF1WBWG16", 775, 9},
    {"SCF1WBWG10", 9, 780, false, true, true},
};

constexpr NoiseLine kNoise = {0.001, 0.00025};

/** The frame as it is without mirroring, and words of the whole picture that "ipp" makes of a Bayer frame. */
class Words {
public:
    explicit Words(const SourceView& frame) : m_frame(frame) {
        Format wide = frame.format;
        wide.bits = 16;
        const TestFrame words = MakeFrame(wide, frame.width, frame.height, [&](uint32_t row, uint32_t column) {
            const auto* bytes = static_cast<const uint8_t*>(frame.data) + row * frame.stride;
            const uint32_t sample =
                frame.format.bits == 8 ? bytes[column] : bytes[2 * column] | bytes[2 * column + 1] << 8;
            return static_cast<uint16_t>(sample << (16 - frame.format.bits));
        });
        if (frame.format.family == Family::TrueSense) {
            m_words.assign(reinterpret_cast<const uint16_t*>(words.bytes.data()),
                           reinterpret_cast<const uint16_t*>(words.bytes.data() + words.bytes.size()));
            return;
        }
        m_channels = 3;
        m_words.resize(size_t{3} * frame.width * frame.height);
        Options options;
        options.algorithm = "ipp";
        Convert(words.view, {m_words.data(), frame.width, frame.height, 0, 2 * m_words.size(), FormatByName("RGB16")},
                options);
    }

    int64_t At(int64_t row, int64_t column, int64_t channel) const {
        row = Inside(row, m_frame.height, m_frame.verMirrored);
        column = Inside(column, m_frame.width, m_frame.horMirrored);
        return m_words[(row * m_frame.width + column) * m_channels + channel];
    }
    int64_t Side() const {
        return m_channels == 1 ? 4 : 2;
    }

private:
    int64_t Inside(int64_t index, int64_t size, bool isMirrored) const {
        index = FoldedIndex(index, size, Side());
        return isMirrored ? size - 1 - index : index;
    }

    const SourceView m_frame;
    size_t m_channels = 1;
    std::vector<uint16_t> m_words;
};

std::span<const uint8_t> WeightsFor(Family family, bool hasNoise) {
    if (family == Family::Bayer) return hasNoise ? BayerFineNoiseWeights() : BayerFineWeights();
    return hasNoise ? TrueSenseFineNoiseWeights() : TrueSenseFineWeights();
}

/** Samples of a picture of `bits`: red, green and blue of each pixel. */
std::vector<uint32_t> Plain(const SourceView& frame, bool hasNoise, int bits) {
    PlainNetwork network(WeightsFor(frame.format.family, hasNoise));
    const Words words(frame);
    const int64_t side = network.Side(), top = frame.format.phase / side, left = frame.format.phase % side;
    const int64_t rows = (frame.height + top + side - 1) / side, columns = (frame.width + left + side - 1) / side;
    const auto isMeasured = [&](int64_t plane) {
        return side == 2 ? plane == 0 || plane == 4 || plane == 7 || plane == 11 : (plane / 4 + plane % 4) % 2 == 0;
    };
    Grid result = network.Run(
        rows, columns, [&](int64_t row, int64_t column, int64_t c) { return words.At(row - top, column - left, c); },
        isMeasured, hasNoise ? &kNoise : nullptr);
    const int sampleBits = std::max<int>(frame.format.bits, bits);
    std::vector<uint32_t> samples;
    for (uint32_t y = 0; y < frame.height; ++y)
        for (uint32_t x = 0; x < frame.width; ++x)
            for (int64_t channel = 0; channel < 3; ++channel) {
                const int64_t row = top + (frame.verMirrored ? frame.height - 1 - y : y);
                const int64_t column = left + (frame.horMirrored ? frame.width - 1 - x : x);
                const int64_t plane = (row % side * side + column % side) * 3 + channel;
                const int64_t word = result.At(row / side, column / side, plane) + (1 << (16 - sampleBits) >> 1);
                samples.push_back(static_cast<uint32_t>(std::min<int64_t>(word, 65535) >> (16 - bits)));
            }
    return samples;
}

/** Calm and wild noise in turns, so that layers take both of their ways to a sum. */
TestFrame MakeMixedNoise(const Format& format, uint32_t width, uint32_t height) {
    std::mt19937 random(7);
    const auto sample = [&](uint32_t, uint32_t column) {
        const auto wild = static_cast<uint32_t>(random() & White(format));
        return static_cast<uint16_t>(column / 100 % 2 == 0 ? wild / 16 + White(format) / 3 : wild);
    };
    return MakeFrame(format, width, height, sample, format.bits > 8 ? 6 : 3);
}

TEST(Fine, EqualsThePlainNetwork) {
    for (const Case& c : kCases) {
        const Format format = FormatByName(c.format), destination = FormatByName(c.destination);
        TestFrame frame = MakeMixedNoise(format, c.width, c.height);
        frame.view.horMirrored = c.isHorMirrored;
        frame.view.verMirrored = c.isVerMirrored;
        const std::vector<uint32_t> expected = Plain(frame.view, c.hasNoise, destination.bits);
        const auto noise = c.hasNoise ? std::optional(kNoise) : std::nullopt;
        test::ForEachInstructionSet([&] {
            for (const int threads : {1, 3}) {
                FineInterpolator interpolator(format.family);
                TestPicture picture(destination, c.width, c.height);
                ASSERT_EQ(Interpolate(interpolator, frame.view, picture.View(), threads, noise), 0u);
                EXPECT_TRUE(picture.Image().GuardsIntact());
                for (uint32_t i = 0; i < expected.size(); ++i)
                    ASSERT_EQ(picture.At(i / 3 / c.width, i / 3 % c.width, i % 3), expected[i])
                        << c.format << ", sample " << i << ", threads " << threads;
            }
        });
    }
}

/** Around the largest words whose sums are computed from transformed cells, with those signs that make them largest. */
TEST(Fine, SumsAreExactAtTheLimits) {
    const Network& network = NetworkFor(Family::Bayer, false);
    const HiddenLayer& layer = network.hidden.back();
    const Filters& filters = layer.filters;
    ASSERT_FALSE(filters.transformed.empty());
    constexpr size_t kWidth = 51;  // an odd number, in several blocks
    const size_t planes = filters.inputs;
    const auto weight = [&](size_t output, size_t place, size_t plane) -> int64_t {
        return filters.weights[((place * planes + plane) / 2 * filters.outputs + output) * 2 + plane % 2];
    };
    for (const int extreme : {8191, 8192, 32767})
        for (size_t filter = 0; filter < filters.outputs; filter += 5) {
            std::vector<std::vector<int16_t>> words(4, std::vector<int16_t>((kWidth + 2 + 2 * kCellSlack) * planes));
            for (size_t row = 0; row < 4; ++row)
                for (size_t i = 0; i < words[row].size(); ++i) {
                    const size_t place = std::min<size_t>(row, 2) * 3 + i / planes % 3;
                    words[row][i] = static_cast<int16_t>(weight(filter, place, i % planes) < 0 ? ~extreme : extreme);
                }
            test::ForEachInstructionSet([&] {
                std::vector<std::vector<int16_t>> out(2, std::vector<int16_t>((kWidth + kCellSlack) * filters.outputs));
                LayerMemory memory(network);
                HiddenRows(layer, {{words[0].data(), words[1].data(), words[2].data(), words[3].data()}}, {}, {},
                           {{out[0].data(), out[1].data()}}, kWidth, memory);
                for (size_t row = 0; row < 2; ++row)
                    for (size_t i = 0; i < kWidth * filters.outputs; ++i) {
                        int64_t sum = int64_t{1} << layer.shift >> 1;
                        for (size_t place = 0; place < 9; ++place)
                            for (size_t plane = 0; plane < planes; ++plane)
                                sum += weight(i % filters.outputs, place, plane) *
                                       words[row + place / 3][(i / filters.outputs + place % 3) * planes + plane];
                        const int64_t value = std::clamp<int64_t>(sum >> layer.shift, -32768, 32767);
                        ASSERT_EQ(out[row][i], std::max(value, (value + 4) >> 3)) << extreme << ", filter " << filter;
                    }
            });
        }
}

/** With the noise model, too: there is none to remove. */
TEST(Fine, KeepsFlatFields) {
    for (const char* name : {"BayerGR12", "CFA_BWGW_WGWR_GWRW_WBWG_12"})
        for (const bool hasNoise : {false, true})
            for (const Colour& levels :
                 {Colour{0, 0, 0}, Colour{1, 1, 1}, Colour{0.9, 0.2, 0.05}, Colour{0.1, 0.3, 1}}) {
                Converter converter(FormatByName(name).family);
                converter.SetAlgorithm("fine");
                converter.SetFinish(Finish{});
                if (hasNoise) converter.SetNoise(NoiseAt(24));
                TestFrame frame = MakeFlat(FormatByName(name), 37, 26, levels);
                TestPicture picture(FormatByName("RGB12"), 37, 26);
                converter.Convert(frame.view, picture.View());
                for (uint32_t i = 0; i < 37 * 26 * 3; ++i)
                    ASSERT_EQ(picture.At(i / 3 / 37, i / 3 % 37, i % 3), std::lround(levels[i % 3] * 4095)) << name;
            }
}

/** The noise model belongs to the samples of the frame; levels and gains change both. */
TEST(Fine, FollowsTheNoiseThroughLevelsAndGains) {
    const Format format = FormatByName("BayerRG12");
    std::mt19937 random(3);
    std::normal_distribution<double> normal;
    const auto sample = [&](uint32_t, uint32_t) {
        return static_cast<uint16_t>(std::lround(600 + 20 * normal(random)));
    };
    const TestFrame frame = MakeFrame(format, 64, 64, sample);
    Converter converter(Family::Bayer);
    converter.SetAlgorithm("fine");
    const auto deviation = [&](std::optional<SensorNoise> noise, const Finish& finish) {
        converter.SetNoise(noise);
        converter.SetFinish(finish);
        TestPicture picture(FormatByName("RGB16"), 64, 64);
        converter.Convert(frame.view, picture.View());
        double sum = 0, squares = 0;
        for (uint32_t y = 8; y < 56; ++y)
            for (uint32_t x = 8; x < 56; ++x) {
                const double value = picture.At(y, x, 1);
                sum += value, squares += value * value;
            }
        return std::sqrt(squares / (48 * 48) - std::pow(sum / (48 * 48), 2));
    };
    Finish plain, raised;
    raised.blackLevel = 100;
    raised.whiteLevel = 1100;  // a stretch of 4.095
    raised.gains = {1.5, 1.5, 1.5, 1};
    for (const NoiseLine& line : {NoiseLine{0, 400}, {400.0 / 600, 0}}) {
        const SensorNoise given{{0, 1e9}, line};  // of pan, which a Bayer frame does not have, and of colour
        const double before = deviation(std::nullopt, plain), after = deviation(given, plain);
        EXPECT_LT(after, 0.5 * before);
        EXPECT_NEAR(deviation(given, raised) / deviation(std::nullopt, raised), after / before, 0.1);
    }
}

TEST(Fine, AppliesTheParametersOfTrueSenseFrames) {
    Converter converter(Family::TrueSense);
    converter.SetAlgorithm("fine");
    TestFrame frame = MakeFlat(FormatByName("SCF1WBWG12"), 16, 16, {0.5, 0.25, 0.125});
    TestPicture fine(FormatByName("RGB8"), 16, 16), fast(FormatByName("RGB8"), 16, 16);
    converter.Convert(frame.view, fine.View());
    converter.SetAlgorithm("fast");
    converter.Convert(frame.view, fast.View());
    for (uint32_t channel = 0; channel < 3; ++channel)
        EXPECT_NEAR(fine.At(8, 8, channel), fast.At(8, 8, channel), 1) << channel;
}

/** A grey picture as a frame of 12 bits, through "fine" and back to words. */
template <class GreyAt>
TestPicture GreyThrough(const char* format, uint32_t side, const GreyAt& greyAt) {
    const TestFrame frame = MakeFrame(FormatByName(format), side, side, [&](uint32_t row, uint32_t column) {
        return static_cast<uint16_t>(std::lround(greyAt(row, column)));
    });
    TestPicture picture(FormatByName("RGB12"), side, side);
    Converter converter(FormatByName(format).family);
    converter.SetAlgorithm("fine");
    converter.SetFinish(Finish{});
    converter.Convert(frame.view, picture.View());
    return picture;
}

/**
 * No waves on ramps, and no more halo along an edge than other algorithms: of a step of 2000, "ipp" goes 106 too far,
 * "bayer-like" 268.
 */
TEST(Fine, InventsNothing) {
    constexpr uint32_t kSide = 96, kBorder = 12;
    const auto forPixels = [&](TestPicture picture, const auto& check) {
        for (uint32_t row = kBorder; row < kSide - kBorder; ++row)
            for (uint32_t column = kBorder; column < kSide - kBorder; ++column)
                for (uint32_t channel = 0; channel < 3; ++channel) check(row, column, picture.At(row, column, channel));
    };
    struct Slopes {
        double down, right;
    };
    const struct {
        const char* format;
        double halo;
    } families[] = {{"BayerRG12", 106}, {"TrueSense_BGGR_WBBW_0_12", 160}};
    for (const auto& family : families) {
        for (const Slopes& slopes : {Slopes{0, 30}, {20, 0}, {12, 17}}) {
            const auto ramp = [&](uint32_t row, uint32_t column) {
                return 300 + slopes.down * row + slopes.right * column;
            };
            forPixels(GreyThrough(family.format, kSide, ramp), [&](uint32_t row, uint32_t column, double value) {
                EXPECT_NEAR(value, ramp(row, column), 4) << family.format;
            });
        }
        for (const double slope : {0.1, 0.7}) {
            const auto edge = [&](uint32_t row, uint32_t column) {
                const double right = column - kSide / 2.0 - slope * (row - kSide / 2.0);
                return 1000 + 2000 * std::clamp(right + 0.5, 0.0, 1.0);
            };
            forPixels(GreyThrough(family.format, kSide, edge), [&](uint32_t, uint32_t, double value) {
                EXPECT_NEAR(value, 2000, 1000 + family.halo) << family.format;
            });
        }
    }
}

TEST(Fine, RefusesDamagedWeights) {
    const auto whole = BayerFineWeights();
    std::vector<uint8_t> bytes(whole.begin(), whole.end());
    EXPECT_EQ(ReadNetwork(bytes).side, 2u);
    for (const size_t size : {size_t{0}, size_t{4}, size_t{12}, bytes.size() - 1})
        EXPECT_EQ(ResultOf([&] { ReadNetwork(whole.first(size)); }), 0x80070003) << size;
    for (const size_t place : {0, 4, 5, 6, 7, 8, 9, 11}) {
        std::vector<uint8_t> damaged = bytes;
        damaged[place] ^= 0x3F;
        EXPECT_EQ(ResultOf([&] { ReadNetwork(damaged); }), 0x80070003) << "byte " << place;
    }
    std::vector<uint8_t> coarseBase = bytes;
    coarseBase[11 + bytes[8] + 2] = 0;  // the last of the shifts
    EXPECT_EQ(ResultOf([&] { ReadNetwork(coarseBase); }), 0x80070003);
    bytes.push_back(0);
    EXPECT_EQ(ResultOf([&] { ReadNetwork(bytes); }), 0x80070003);
}

}  // namespace
}  // namespace kvx::frame
