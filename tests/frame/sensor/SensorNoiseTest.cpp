#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "KvxFrame/Mosaic.h"

namespace kvx::frame {
namespace {

void ExpectLine(const NoiseLine& line, double slope, double intercept) {
    EXPECT_NEAR(line.slope, slope, 1e-6);
    EXPECT_NEAR(line.intercept, intercept, 1e-3);
}

TEST(SensorNoise, ModelBetweenAndBeyondItsPoints) {
    for (const double gain : {0.0, 1.0, 11.039999961853027}) {
        ExpectLine(NoiseAt(gain).pan, 0.317931, -25.0769);
        ExpectLine(NoiseAt(gain).colour, 0.162895, -2.9741);
    }
    ExpectLine(NoiseAt(17.690000534057617).pan, 0.600985, 17.0175);
    const double third = 29.90999984741211 + (36.77000045776367 - 29.90999984741211) / 3;
    ExpectLine(NoiseAt(third).pan, (2 * 2.260596 + 5.110443) / 3, (2 * 831.075 + 4154.7388) / 3);
    ExpectLine(NoiseAt(third).colour, (2 * 1.152820 + 2.534002) / 3, (2 * 399.4992 + 2080.2427) / 3);
    ExpectLine(NoiseAt(100).pan, 5.110443, 4154.7388);
    EXPECT_NEAR(NoiseAt(23.96).pan.DeviationAt(1000), 36.76, 0.01);
    EXPECT_EQ(NoiseAt(11.04).pan.DeviationAt(78), 0) << "a negative variance is none";
}

/** A flat frame as words, whose samples before noise are 16 x `byte` and a little. */
std::vector<uint16_t> Flat(const char* format, uint8_t byte, double gain, uint64_t seed, uint32_t side = 512) {
    const std::vector<uint8_t> picture(3 * side * side, byte);
    std::vector<uint8_t> frame(2 * side * side);
    const Format mosaic = FormatByName(format);
    Sensor sensor;
    sensor.noise = NoiseAt(gain);
    sensor.noiseSeed = seed;
    MakeMosaic({picture.data(), side, side, 0, picture.size(), FormatByName("BGR8")},
               {frame.data(), side, side, 0, frame.size(), mosaic}, sensor);
    std::vector<uint16_t> samples(side * side);
    for (size_t i = 0; i < samples.size(); ++i)
        samples[i] = static_cast<uint16_t>(mosaic.bits == 8 ? frame[i] : frame[2 * i] | frame[2 * i + 1] << 8);
    return samples;
}

TEST(SensorNoise, FramesCarryTheModelsVarianceAtEachKindOfSite) {
    struct Case {
        const char* format;
        int firstRow, firstColumn;  // of one kind of sites, which repeats every four rows and columns
        bool isPan;
    };
    for (const Case& sites :
         {Case{"TrueSense_BGGR_WBBW_0_12", 0, 0, true}, Case{"TrueSense_BGGR_WBBW_0_12", 0, 1, false},
          Case{"BayerRG14", 1, 0, false}, Case{"Mono16", 0, 0, true}})
        for (const double gain : {11.04, 23.96, 36.77})
            for (const int byte : {40, 128}) {
                const auto samples = Flat(sites.format, static_cast<uint8_t>(byte), gain, 7, 1024);
                const double white = White(FormatByName(sites.format)), scale = 4095 / white,
                             signal = 4095 * byte / 255.0;
                double sum = 0, squares = 0, count = 0;
                for (int row = sites.firstRow; row < 1024; row += 4)
                    for (int column = sites.firstColumn; column < 1024; column += 4, ++count) {
                        const double error = scale * samples[row * 1024 + column] - signal;
                        sum += error;
                        squares += error * error;
                    }
                const SensorNoise noise = NoiseAt(gain);
                const double deviation = (sites.isPan ? noise.pan : noise.colour).DeviationAt(signal);
                // Rounding adds the twelfth of a code's square. Five standard errors of 65536 samples.
                const double variance = deviation * deviation + scale * scale / 12;
                EXPECT_NEAR(sum / count, 0, 5 * deviation / 256) << sites.format << " " << gain << " " << byte;
                EXPECT_NEAR(squares / count / variance, 1, 5 * std::sqrt(2.0) / 256) << sites.format << " " << gain;
            }
}

TEST(SensorNoise, SameSeedSameFrameEverywhere) {
    const auto frame = Flat("TrueSense_BGGR_WBBW_0_12", 64, 23.96, 5, 4);
    const std::vector<uint16_t> pinned = {1009, 1005, 1045, 1056, 997, 1117, 1035, 1018};
    EXPECT_TRUE(std::equal(pinned.begin(), pinned.end(), frame.begin()));
    EXPECT_NE(frame, Flat("TrueSense_BGGR_WBBW_0_12", 64, 23.96, 6, 4));
}

TEST(SensorNoise, StaysWithinTheFormat) {
    for (const char* format : {"Mono8", "TrueSense_BGGR_WBBW_0_10", "BayerRG12"})
        for (const uint32_t byte : {0u, 255u}) {
            const auto samples = Flat(format, static_cast<uint8_t>(byte), 36.77, 1, 64);
            const uint32_t end = byte == 0 ? 0 : White(FormatByName(format));
            EXPECT_LE(*std::max_element(samples.begin(), samples.end()), White(FormatByName(format)));
            const auto clamped = static_cast<double>(std::count(samples.begin(), samples.end(), end));
            EXPECT_NEAR(clamped / (64.0 * 64), 0.5, 0.125) << format << ": half of the noise points outwards";
        }
}

}  // namespace
}  // namespace kvx::frame
