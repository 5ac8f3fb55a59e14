#include "tools/SensorNoise.h"

#include <gtest/gtest.h>

#include "TemporaryDirectory.h"
#include "ToolRun.h"
#include "tools/Mosaic.h"
#include "tools/PictureEncoder.h"

namespace kvx::tool {
namespace {

SensorNoise DefaultNoiseAt(double analogGain) {
    tagTrueSenseParam params;
    TrueSense_DefaultValues(&params);
    return NoiseAt(params, analogGain);
}

void ExpectLine(const NoiseLine& line, double slope, double intercept) {
    EXPECT_NEAR(line.slope, slope, 1e-6);
    EXPECT_NEAR(line.intercept, intercept, 1e-3);
}

TEST(SensorNoise, ModelBetweenAndBeyondItsPoints) {
    for (const double gain : {0.0, 1.0, 11.039999961853027}) {
        ExpectLine(DefaultNoiseAt(gain).pan, 0.317931, -25.0769);
        ExpectLine(DefaultNoiseAt(gain).colour, 0.162895, -2.9741);
    }
    ExpectLine(DefaultNoiseAt(17.690000534057617).pan, 0.600985, 17.0175);
    const double third = 29.90999984741211 + (36.77000045776367 - 29.90999984741211) / 3;
    ExpectLine(DefaultNoiseAt(third).pan, (2 * 2.260596 + 5.110443) / 3, (2 * 831.075 + 4154.7388) / 3);
    ExpectLine(DefaultNoiseAt(third).colour, (2 * 1.152820 + 2.534002) / 3, (2 * 399.4992 + 2080.2427) / 3);
    ExpectLine(DefaultNoiseAt(100).pan, 5.110443, 4154.7388);
    EXPECT_NEAR(DefaultNoiseAt(23.96).pan.DeviationAt(1000), 36.76, 0.01);
    EXPECT_EQ(DefaultNoiseAt(11.04).pan.DeviationAt(78), 0) << "a negative variance is none";
}

/** A flat frame whose samples before noise are 16 x `byte` and a little. */
RawFrame Flat(const char* format, int byte, double gain, uint64_t seed, int side = 512) {
    const Picture picture{cv::Mat(side, side, CV_8UC3, cv::Scalar::all(byte)), 255};
    return MakeMosaic(picture, frame::FormatByName(format), {.noise = DefaultNoiseAt(gain), .noiseSeed = seed});
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
                const RawFrame rawFrame = Flat(sites.format, byte, gain, 7, 1024);
                const double white = frame::White(rawFrame.format), scale = 4095 / white, signal = 4095 * byte / 255.0;
                double sum = 0, squares = 0, count = 0;
                for (int row = sites.firstRow; row < 1024; row += 4)
                    for (int column = sites.firstColumn; column < 1024; column += 4, ++count) {
                        const double error = scale * rawFrame.samples.at<uint16_t>(row, column) - signal;
                        sum += error;
                        squares += error * error;
                    }
                const SensorNoise noise = DefaultNoiseAt(gain);
                const double deviation = (sites.isPan ? noise.pan : noise.colour).DeviationAt(signal);
                // Rounding adds the twelfth of a code's square. Five standard errors of 65536 samples.
                const double variance = deviation * deviation + scale * scale / 12;
                EXPECT_NEAR(sum / count, 0, 5 * deviation / 256) << sites.format << " " << gain << " " << byte;
                EXPECT_NEAR(squares / count / variance, 1, 5 * std::sqrt(2.0) / 256) << sites.format << " " << gain;
            }
}

TEST(SensorNoise, DeviatesAreNormalAndTheRowsApart) {
    constexpr int kCount = 1 << 18;
    double fourth = 0, neighbours = 0, rows = 0, last = 0;
    NormalDeviates deviates(1, 0), below(1, 1);
    for (int index = 0; index < kCount; ++index) {
        const double value = deviates.Next();
        fourth += value * value * value * value;
        neighbours += value * last;
        rows += value * below.Next();
        last = value;
    }
    EXPECT_NEAR(fourth / kCount, 3, 5 * std::sqrt(96.0 / kCount));
    EXPECT_NEAR(neighbours / kCount, 0, 5 / std::sqrt(kCount));
    EXPECT_NEAR(rows / kCount, 0, 5 / std::sqrt(kCount));
}

TEST(SensorNoise, SameSeedSameFrameEverywhere) {
    const RawFrame frame = Flat("TrueSense_BGGR_WBBW_0_12", 64, 23.96, 5, 4);
    EXPECT_EQ(EncodeRaw(frame.samples), EncodeRaw(Flat("TrueSense_BGGR_WBBW_0_12", 64, 23.96, 5, 4).samples));
    EXPECT_NE(EncodeRaw(frame.samples), EncodeRaw(Flat("TrueSense_BGGR_WBBW_0_12", 64, 23.96, 6, 4).samples));
    const cv::Mat pinned = (cv::Mat_<uint16_t>(2, 4) << 1009, 1005, 1045, 1056, 997, 1117, 1035, 1018);
    EXPECT_EQ(EncodeRaw(frame.samples.rowRange(0, 2).clone()), EncodeRaw(pinned)) << frame.samples;
}

TEST(SensorNoise, StaysWithinTheFormat) {
    for (const char* format : {"Mono8", "TrueSense_BGGR_WBBW_0_10", "BayerRG12"})
        for (const int byte : {0, 255}) {
            cv::Mat samples;
            Flat(format, byte, 36.77, 1, 64).samples.convertTo(samples, CV_32S);
            const int white = static_cast<int>(frame::White(frame::FormatByName(format)));
            double least = 0, largest = 0;
            cv::minMaxLoc(samples, &least, &largest);
            const double end = byte == 0 ? least : largest;
            EXPECT_EQ(end, byte == 0 ? 0 : white);
            EXPECT_GE(least, 0);
            EXPECT_LE(largest, white);
            const int clamped = cv::countNonZero(samples == static_cast<int>(end));
            EXPECT_NEAR(clamped / (64.0 * 64), 0.5, 0.125) << format << ": half of the noise points outwards";
        }
}

TEST(SensorNoise, ToolAddsItBySeed) {
    const TemporaryDirectory directory;
    const cv::Mat grey(8, 8, CV_8UC1, cv::Scalar(64));
    const std::string picture = directory.Write("grey.png", EncodePicture({grey, 255}, PictureKind::Png));
    const auto run = [&](std::vector<std::string> noise) {
        noise.insert(noise.begin(), {"mosaic", picture, "-", "--format", "TrueSense_BGGR_WBBW_0_12"});
        return RunSuccessfully(noise).standardOutput;
    };
    const auto expected = [&](uint64_t seed) {
        return EncodeRaw(Flat("TrueSense_BGGR_WBBW_0_12", 64, 23.96, seed, 8).samples);
    };
    EXPECT_EQ(run({"--analog-gain", "23.96"}), expected(1));
    EXPECT_EQ(run({"--analog-gain", "23.96", "--seed", "5"}), expected(5));
    EXPECT_EQ(run({}), EncodeRaw(cv::Mat(8, 8, CV_16UC1, cv::Scalar(1028))));
}

}  // namespace
}  // namespace kvx::tool
